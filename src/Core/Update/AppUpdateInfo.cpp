#include "Core/Update/AppUpdateInfo.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>

namespace Tavrin {
namespace {

enum Key { versionKey, releaseNotesKey, downloadUrlKey, zipUrlKey, pubDateKey, keyCount };

constexpr std::array<const char*, keyCount> keyNames{
    "version", "releaseNotes", "downloadUrl", "zipUrl", "pubDate"};
constexpr std::array requiredKeys{versionKey, releaseNotesKey};

/// Decodes while parsing: no document is built, so whatever a server nests below unknown keys costs
/// neither memory nor stack. A callback that returns false ends the parse.
class ManifestHandler : public nlohmann::json_sax<nlohmann::json> {
public:
    QString errorDescription;

    bool null() override
    {
        if (ignored())
            return true;
        if (m_depth == 0 || std::ranges::count(requiredKeys, m_key) > 0)
            return unsuitable();
        value() = std::nullopt;
        return true;
    }

    bool boolean(bool /*value*/) override { return unsuitable(); }
    bool number_integer(number_integer_t /*value*/) override { return unsuitable(); }
    bool number_unsigned(number_unsigned_t /*value*/) override { return unsuitable(); }
    bool number_float(number_float_t /*value*/, const string_t& /*text*/) override { return unsuitable(); }
    bool binary(binary_t& /*value*/) override { return unsuitable(); }

    bool string(string_t& text) override
    {
        if (ignored())
            return true;
        if (m_depth == 0)
            return unsuitable();
        value() = QString::fromStdString(text);
        return true;
    }

    bool start_object(std::size_t /*elements*/) override
    {
        if (m_depth != 0 && !ignored())
            return unsuitable();
        ++m_depth;
        return true;
    }

    bool key(string_t& text) override
    {
        if (m_depth != manifestDepth)
            return true;
        const auto name = std::ranges::find_if(keyNames, [&](const char* known) { return text == known; });
        m_key = static_cast<Key>(name - keyNames.begin());
        return true;
    }

    bool end_object() override
    {
        --m_depth;
        return true;
    }

    bool start_array(std::size_t /*elements*/) override
    {
        if (!ignored())
            return unsuitable();
        ++m_depth;
        return true;
    }

    bool end_array() override
    {
        --m_depth;
        return true;
    }

    bool parse_error(std::size_t position, const std::string& /*token*/,
        const nlohmann::json::exception& /*error*/) override
    {
        return fail(
            QStringLiteral("Dữ liệu nhận được không phải là JSON hợp lệ (tại byte %1).").arg(position));
    }

    /// What the parsed object held, or why that is no manifest.
    DecodedUpdateInfo take()
    {
        for (const Key key : requiredKeys) {
            if (!m_values.at(key))
                return ManifestDecodingError{
                    QStringLiteral("Thông tin cập nhật thiếu trường \"%1\".").arg(name(key))};
        }
        return AppUpdateInfo{*std::move(m_values[versionKey]), *std::move(m_values[releaseNotesKey]),
            std::move(m_values[downloadUrlKey]), std::move(m_values[zipUrlKey]),
            std::move(m_values[pubDateKey])};
    }

private:
    /// Depth inside the manifest's own braces.
    static constexpr int manifestDepth = 1;

    /// Inside the value of a key that is not ours: only such a value can open a level below the manifest's.
    bool ignored() const
    {
        return m_depth > manifestDepth || (m_depth == manifestDepth && m_key == keyCount);
    }

    std::optional<QString>& value() { return m_values.at(m_key); }

    bool unsuitable()
    {
        if (ignored())
            return true;
        if (m_depth == 0)
            return fail(QStringLiteral("Thông tin cập nhật không phải là một đối tượng JSON."));
        return fail(
            QStringLiteral("Trường \"%1\" trong thông tin cập nhật phải là văn bản.").arg(name(m_key)));
    }

    bool fail(const QString& description)
    {
        errorDescription = description;
        return false;
    }

    static QString name(Key key) { return QLatin1String(keyNames.at(key)); }

    std::array<std::optional<QString>, keyCount> m_values;
    Key m_key = keyCount;
    std::size_t m_depth = 0;
};

} // namespace

DecodedUpdateInfo decodeUpdateInfo(const QByteArray& json)
{
    // The parser takes a NUL byte for the end of its input and would not look at what follows.
    const auto end = std::ranges::find(json, '\0');
    if (end != json.end())
        return ManifestDecodingError{
            QStringLiteral("Dữ liệu nhận được không phải là JSON hợp lệ (tại byte %1).")
                .arg(end - json.begin())};
    ManifestHandler handler;
    if (!nlohmann::json::sax_parse(json.begin(), json.end(), &handler))
        return ManifestDecodingError{handler.errorDescription};
    return handler.take();
}

QByteArray encodeUpdateInfo(const AppUpdateInfo& info)
{
    // toStdString() makes valid UTF-8 of every text, so dumping cannot fail.
    nlohmann::ordered_json json{
        {keyNames[versionKey], info.version.toStdString()},
        {keyNames[releaseNotesKey], info.releaseNotes.toStdString()},
    };
    const auto add = [&json](Key key, const std::optional<QString>& value) {
        if (value)
            json[keyNames.at(key)] = value->toStdString();
    };
    add(downloadUrlKey, info.downloadUrl);
    add(zipUrlKey, info.zipUrl);
    add(pubDateKey, info.pubDate);
    return QByteArray::fromStdString(json.dump());
}

} // namespace Tavrin
