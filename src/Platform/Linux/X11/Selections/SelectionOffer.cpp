#include "Platform/Linux/X11/Selections/SelectionOffer.h"

#include "Platform/Linux/X11/Selections/SelectionTargets.h"

#include <algorithm>

namespace Tavrin {
namespace {

using namespace SelectionTargets;

/// What STRING can carry.
bool isLatin1(QStringView text)
{
    return std::ranges::all_of(text, [](QChar character) { return character.unicode() <= 0xFF; });
}

} // namespace

SelectionOffer::SelectionOffer(const PasteboardContents& contents, Pasteboard::Stay stay)
    : m_formats(contents.formats)
    , m_stay(stay)
{
    if (!contents.string)
        return;
    m_utf8 = contents.string->toUtf8();
    m_isLatin1 = isLatin1(*contents.string);
}

QByteArrayList SelectionOffer::targets() const
{
    QByteArrayList result;
    if (m_utf8) {
        result << utf8String << plainUtf8Text << anyText << plainText;
        if (m_isLatin1)
            result << latin1String;
    }
    for (const auto& format : m_formats)
        result << format.type.toLatin1();
    if (!isLasting() && !result.contains(passwordManagerHint))
        result << passwordManagerHint;
    return result;
}

std::optional<SelectionOffer::Value> SelectionOffer::value(const QByteArray& target) const
{
    if (auto text = textValue(target))
        return text;
    if (!isLasting() && target == passwordManagerHint)
        return Value{target, secret};
    const auto format
        = std::ranges::find(m_formats, QString::fromLatin1(target), &PasteboardContents::Format::type);
    return format == m_formats.end() ? std::nullopt : std::optional(Value{target, format->data});
}

std::optional<SelectionOffer::Value> SelectionOffer::textValue(const QByteArray& target) const
{
    if (!m_utf8)
        return std::nullopt;
    if (target == utf8String || target == plainUtf8Text || target == plainText)
        return Value{target, *m_utf8};
    // Asked for any text, an owner says by the type which it gives.
    if (m_isLatin1 && (target == latin1String || target == anyText))
        return Value{latin1String, QString::fromUtf8(*m_utf8).toLatin1()};
    return target == anyText ? std::optional(Value{utf8String, *m_utf8}) : std::nullopt;
}

PasteboardContents SelectionOffer::contents(Pasteboard::Detail detail) const
{
    PasteboardContents result;
    if (m_utf8)
        result.string = QString::fromUtf8(*m_utf8);
    if (detail == Pasteboard::Detail::allFormats)
        result.formats = m_formats;
    return result;
}

qsizetype SelectionOffer::size() const
{
    qsizetype bytes = m_utf8 ? m_utf8->size() : 0;
    for (const auto& format : m_formats)
        bytes += format.data.size();
    return bytes;
}

} // namespace Tavrin
