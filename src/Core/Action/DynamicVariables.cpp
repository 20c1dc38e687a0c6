#include "Core/Action/DynamicVariables.h"

#include <QLocale>

namespace Tavrin {
namespace {

constexpr QStringView clipboardToken = u"{clipboard}";

struct DateToken {
    QStringView token;
    QStringView format;
};

constexpr DateToken dateTokens[] = {
    {u"{date}", u"yyyy-MM-dd"},
    {u"{time}", u"HH:mm:ss"},
    {u"{datetime}", u"yyyy-MM-dd HH:mm:ss"},
    {u"{year}", u"yyyy"},
    {u"{month}", u"MM"},
    {u"{day}", u"dd"},
};

} // namespace

bool mentionsClipboard(const QString& text)
{
    return text.contains(clipboardToken);
}

QString resolveDynamicVariables(const QString& text, const QDateTime& now, const QString& clipboard)
{
    QString resolved = text;
    for (const auto& [token, format] : dateTokens)
        resolved.replace(token.toString(), QLocale::c().toString(now, format));
    return resolved.replace(clipboardToken.toString(), clipboard);
}

} // namespace Tavrin
