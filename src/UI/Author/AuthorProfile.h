#pragma once

#include "MakerData.h"

#include <QString>

namespace Tavrin {

/// Who made the program and how to reach them, each empty where there is none. The defaults are those of the
/// build.
struct AuthorProfile {
    QString name = QString::fromUtf8(MakerData::authorName);
    QString phone = QString::fromUtf8(MakerData::authorPhone);
    /// Whole addresses.
    QString zalo = QString::fromUtf8(MakerData::authorZalo);
    QString telegram = QString::fromUtf8(MakerData::authorTelegram);
    QString facebook = QString::fromUtf8(MakerData::authorFacebook);
    QString website = QString::fromUtf8(MakerData::website);
    QString bankName = QString::fromUtf8(MakerData::bankName);
    QString accountHolder = QString::fromUtf8(MakerData::bankAccountHolder);
    QString accountNumber = QString::fromUtf8(MakerData::bankAccountNumber);
};

} // namespace Tavrin
