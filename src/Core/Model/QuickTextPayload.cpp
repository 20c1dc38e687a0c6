#include "Core/Model/QuickTextPayload.h"

#include <nlohmann/json.hpp>

namespace Tavrin {
namespace {

struct ModeEntry {
    QStringView rawValue;
    QStringView title;
    QStringView shortTitle;
};

constexpr std::array<ModeEntry, QuickTextPayload::allModes.size()> modes{{
    {u"paste", u"Tự động dán (Auto Paste)", u"Dán"},
    {u"copyOnly", u"Chỉ chép vào Clipboard", u"Chép"},
    {u"pasteAndKeep", u"Dán & Lưu vào Clipboard", u"Dán & Chép"},
}};

const ModeEntry& entry(QuickTextPayload::Mode mode)
{
    return modes.at(static_cast<std::size_t>(mode));
}

std::optional<QuickTextPayload> decodePayload(const QString& raw)
{
    const auto json = nlohmann::json::parse(raw.toStdString(), nullptr, /*allow_exceptions=*/false);
    if (!json.is_object())
        return std::nullopt;
    const auto mode = json.find("mode");
    const auto text = json.find("text");
    const auto restore = json.find("restoreClipboard");
    if (mode == json.end() || text == json.end() || restore == json.end())
        return std::nullopt;
    if (!mode->is_string() || !text->is_string() || !restore->is_boolean())
        return std::nullopt;
    const auto knownMode = quickTextModeFromRawValue(QString::fromStdString(mode->get<std::string>()));
    if (!knownMode)
        return std::nullopt;
    return QuickTextPayload{
        *knownMode, QString::fromStdString(text->get<std::string>()), restore->get<bool>()};
}

} // namespace

QString QuickTextPayload::encodeToString() const
{
    const nlohmann::ordered_json json{
        {"mode", rawValue(mode).toStdString()},
        {"text", text.toStdString()},
        {"restoreClipboard", restoreClipboard},
    };
    // toStdString() has made valid UTF-8 of every text, so dumping cannot fail.
    return QString::fromStdString(json.dump());
}

QuickTextPayload QuickTextPayload::from(const QString& raw)
{
    if (auto payload = decodePayload(raw))
        return *std::move(payload);
    return {Mode::paste, raw, false};
}

QString rawValue(QuickTextPayload::Mode mode)
{
    return entry(mode).rawValue.toString();
}

QString title(QuickTextPayload::Mode mode)
{
    return entry(mode).title.toString();
}

QString shortTitle(QuickTextPayload::Mode mode)
{
    return entry(mode).shortTitle.toString();
}

std::optional<QuickTextPayload::Mode> quickTextModeFromRawValue(const QString& rawValue)
{
    for (const auto mode : QuickTextPayload::allModes) {
        if (entry(mode).rawValue == rawValue)
            return mode;
    }
    return std::nullopt;
}

} // namespace Tavrin
