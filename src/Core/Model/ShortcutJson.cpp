#include "Core/Model/ShortcutJson.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace Tavrin {
namespace {

using Json = nlohmann::ordered_json;

enum Key {
    idKey,
    nameKey,
    keyCodeKey,
    modifiersKey,
    actionTypeKey,
    actionValueKey,
    isEnabledKey,
    createdAtKey,
    keyCount
};

constexpr std::array<const char*, keyCount> keyNames{
    "id", "name", "keyCode", "modifiers", "actionType", "actionValue", "isEnabled", "createdAt"};

/// Decodes while parsing: no document is built, so a file of many megabytes costs no more memory than
/// its shortcuts, and nesting of any depth no stack. A callback that returns false ends the parse.
class ShortcutsHandler : public nlohmann::json_sax<nlohmann::json> {
public:
    std::vector<ShortcutItem> shortcuts;
    QString errorDescription;

    bool null() override { return unsuitable("null"); }
    bool binary(binary_t& /*value*/) override { return unsuitable("binary"); }

    bool boolean(bool value) override
    {
        if (ignored())
            return true;
        if (m_depth != recordDepth || m_key != isEnabledKey)
            return unsuitable("boolean");
        m_item.isEnabled = value;
        return seen();
    }

    bool number_integer(number_integer_t value) override { return number(static_cast<double>(value)); }
    bool number_unsigned(number_unsigned_t value) override { return number(static_cast<double>(value)); }
    bool number_float(number_float_t value, const string_t& /*text*/) override { return number(value); }

    bool string(string_t& value) override
    {
        if (ignored())
            return true;
        if (m_depth != recordDepth)
            return unsuitable("string");
        return text(QString::fromStdString(value)) && seen();
    }

    bool start_object(std::size_t /*elements*/) override
    {
        if (m_depth == 1) {
            m_item = {};
            m_seen = 0;
        } else if (!ignored()) {
            return unsuitable("object");
        }
        ++m_depth;
        return true;
    }

    bool key(string_t& value) override
    {
        if (m_depth != recordDepth)
            return true;
        const auto name = std::ranges::find_if(keyNames, [&](const char* known) { return value == known; });
        m_key = static_cast<Key>(name - keyNames.begin());
        return true;
    }

    bool end_object() override
    {
        if (--m_depth != 1)
            return true;
        for (int key = 0; key < keyCount; ++key) {
            if (!(m_seen & (1U << key)))
                return fail(QStringLiteral("record %1 has no key \"%2\"").arg(index()).arg(name(key)));
        }
        shortcuts.push_back(std::move(m_item));
        return true;
    }

    bool start_array(std::size_t /*elements*/) override
    {
        if (m_depth != 0 && !ignored())
            return unsuitable("array");
        ++m_depth;
        return true;
    }

    bool end_array() override
    {
        --m_depth;
        return true;
    }

    bool parse_error(
        std::size_t position, const std::string& /*token*/, const nlohmann::json::exception& error) override
    {
        return fail(QStringLiteral("not valid JSON at byte %1 (%2)")
                        .arg(position)
                        .arg(QString::fromUtf8(error.what()).section(QStringLiteral(": "), -1)));
    }

private:
    /// Depth inside a record's own braces; the array is depth 1.
    static constexpr int recordDepth = 2;

    /// Inside the value of a key that is not ours. Only such a value can open a level below the
    /// record's own: every other nesting has failed at once.
    bool ignored() const { return m_depth > recordDepth || (m_depth == recordDepth && m_key == keyCount); }

    bool number(double value)
    {
        if (ignored())
            return true;
        if (m_depth != recordDepth)
            return unsuitable("number");
        switch (m_key) {
        case keyCodeKey:
            return unsignedNumber(value, m_item.keyCode) && seen();
        case modifiersKey:
            return unsignedNumber(value, m_item.modifiers) && seen();
        case createdAtKey:
            m_item.createdAt = value;
            return seen();
        default:
            return unsuitable("number");
        }
    }

    bool unsignedNumber(double value, std::uint32_t& result)
    {
        // A double holds every 32-bit integer exactly.
        if (value < 0 || value > std::numeric_limits<std::uint32_t>::max() || value != std::floor(value))
            return fail(QStringLiteral("record %1: \"%2\" is not an unsigned 32-bit number")
                            .arg(index())
                            .arg(name(m_key)));
        result = static_cast<std::uint32_t>(value);
        return true;
    }

    bool text(const QString& value)
    {
        switch (m_key) {
        case idKey:
            return uuid(value);
        case nameKey:
            m_item.name = value;
            return true;
        case actionTypeKey:
            if (const auto type = actionTypeFromRawValue(value)) {
                m_item.actionType = *type;
                return true;
            }
            return fail(QStringLiteral("record %1: unknown action type \"%2\"").arg(index()).arg(value));
        case actionValueKey:
            m_item.actionValue = value;
            return true;
        default:
            return unsuitable("string");
        }
    }

    bool uuid(const QString& value)
    {
        // QUuid also reads braces and lone hexadecimal; the file has only the canonical form.
        constexpr qsizetype canonicalLength = 36;
        m_item.id = value.size() == canonicalLength ? QUuid::fromString(value) : QUuid();
        const bool isNull = m_item.id.isNull() && value != QUuid().toString(QUuid::WithoutBraces);
        return !isNull || fail(QStringLiteral("record %1: \"%2\" is not a UUID").arg(index()).arg(value));
    }

    bool seen()
    {
        m_seen |= 1U << m_key;
        return true;
    }

    bool unsuitable(const char* type)
    {
        if (ignored())
            return true;
        if (m_depth == 0)
            return fail(QStringLiteral("the file holds a %1 instead of an array").arg(QLatin1String(type)));
        if (m_depth == 1)
            return fail(QStringLiteral("element %1 is a %2 instead of an object")
                            .arg(index())
                            .arg(QLatin1String(type)));
        return fail(QStringLiteral("record %1: \"%2\" must not be a %3")
                        .arg(index())
                        .arg(name(m_key), QLatin1String(type)));
    }

    bool fail(const QString& description)
    {
        errorDescription = description;
        return false;
    }

    std::size_t index() const { return shortcuts.size(); }
    static QString name(int key) { return QLatin1String(keyNames.at(static_cast<std::size_t>(key))); }

    ShortcutItem m_item;
    unsigned m_seen = 0;
    Key m_key = keyCount;
    std::size_t m_depth = 0;
};

} // namespace

DecodedShortcuts decodeShortcuts(const QByteArray& json)
{
    ShortcutsHandler handler;
    if (!nlohmann::json::sax_parse(json.cbegin(), json.cend(), &handler))
        return DecodingError{handler.errorDescription};
    return std::move(handler.shortcuts);
}

QByteArray encodeShortcuts(std::span<const ShortcutItem> shortcuts)
{
    Json array = Json::array();
    for (const ShortcutItem& item : shortcuts) {
        array.push_back({
            {keyNames[idKey], item.id.toString(QUuid::WithoutBraces).toUpper().toStdString()},
            {keyNames[nameKey], item.name.toStdString()},
            {keyNames[keyCodeKey], item.keyCode},
            {keyNames[modifiersKey], item.modifiers},
            {keyNames[actionTypeKey], rawValue(item.actionType).toStdString()},
            {keyNames[actionValueKey], item.actionValue.toStdString()},
            {keyNames[isEnabledKey], item.isEnabled},
            {keyNames[createdAtKey], item.createdAt},
        });
    }
    return QByteArray::fromStdString(array.dump());
}

} // namespace Tavrin
