#include "Platform/Linux/X11/Selections/SelectionTargets.h"

#include <QUtf8StringView>
#include <array>

namespace Tavrin::SelectionTargets {
namespace {

/// Programs write the parameter in capitals, too, and with a space before it.
QByteArray normalized(const QByteArray& target)
{
    return target.contains('/') ? target.toLower().replace(' ', "") : target;
}

bool isUtf8(const QByteArray& target)
{
    return target == utf8String || normalized(target) == plainUtf8Text;
}

bool isPlainText(const QByteArray& target)
{
    return normalized(target).startsWith(plainText);
}

bool isEncodedPicture(const QByteArray& target)
{
    return target.startsWith("image/") && !target.startsWith("image/svg");
}

QByteArray chosenPicture(const QByteArrayList& offered)
{
    if (offered.contains("image/png"))
        return "image/png";
    for (const QByteArray& target : offered) {
        if (isEncodedPicture(target))
            return target;
    }
    return {};
}

/// Where nobody says which encoding it is.
QString decodeUnknown(const QByteArray& data)
{
    return QUtf8StringView(data).isValidUtf8() ? QString::fromUtf8(data) : QString::fromLatin1(data);
}

} // namespace

QByteArrayList textTargets(const QByteArrayList& offered)
{
    static constexpr std::array preference{utf8String, plainUtf8Text, latin1String, plainText, anyText};
    QByteArrayList result;
    for (const QByteArray preferred : preference) {
        for (const QByteArray& target : offered) {
            if (normalized(target) == preferred && !result.contains(target))
                result.append(target);
        }
    }
    return result;
}

QByteArrayList formatTargets(const QByteArrayList& offered)
{
    const QByteArray picture = chosenPicture(offered);
    QByteArrayList result;
    for (const QByteArray& target : offered) {
        const bool isFormat = target.contains('/') ? !isPlainText(target) : target == passwordManagerHint;
        if (isFormat && (!isEncodedPicture(target) || target == picture) && !result.contains(target))
            result.append(target);
    }
    return result;
}

std::optional<QString> decodeText(const QByteArray& target, const QByteArray& type, const QByteArray& data)
{
    if (isUtf8(type))
        return QString::fromUtf8(data);
    // Some owners name every text so, whatever they were asked for.
    if (type == latin1String)
        return isUtf8(target) ? decodeUnknown(data) : QString::fromLatin1(data);
    if (type == anyText || isPlainText(type))
        return decodeUnknown(data);
    return std::nullopt;
}

} // namespace Tavrin::SelectionTargets
