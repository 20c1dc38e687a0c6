#pragma once

#include "Core/Action/Pasteboard.h"

#include <QByteArrayList>

namespace Tavrin {

/// What one selection holds while it is ours, under the names that other programs ask for. Never changes,
/// so that a transfer that has begun goes on with it when the selection holds something else by then.
class SelectionOffer {
public:
    SelectionOffer(const PasteboardContents& contents, Pasteboard::Stay stay);

    struct Value {
        /// Name of the property's type; its format is 8 bits.
        QByteArray type;
        QByteArray data;
    };

    /// The targets that have a value, the text's first.
    QByteArrayList targets() const;
    /// The value of one of the targets; nothing for any other.
    std::optional<Value> value(const QByteArray& target) const;

    /// What was put there; without the formats beside the text where only that is asked for.
    PasteboardContents contents(Pasteboard::Detail detail) const;
    bool isLasting() const { return m_stay == Pasteboard::Stay::lasting; }
    /// Bytes held, about.
    qsizetype size() const;

private:
    std::optional<Value> textValue(const QByteArray& target) const;

    std::optional<QByteArray> m_utf8;
    std::vector<PasteboardContents::Format> m_formats;
    Pasteboard::Stay m_stay;
    bool m_isLatin1 = false;
};

} // namespace Tavrin
