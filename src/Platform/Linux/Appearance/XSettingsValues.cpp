#include "Platform/Linux/Appearance/XSettingsValues.h"

#include <QtEndian>
#include <cstdint>
#include <variant>

namespace Tavrin {
namespace {

/// Reads numbers and texts one after the other. What runs over the end is zero or empty, and isBroken() from
/// then on.
class Reader {
public:
    Reader(const QByteArray& bytes, bool isBigEndian)
        : m_bytes(bytes)
        , m_isBigEndian(isBigEndian)
    {
    }

    template <typename Number>
    Number number()
    {
        const QByteArray part = bytes(sizeof(Number));
        if (part.isEmpty())
            return 0;
        return m_isBigEndian ? qFromBigEndian<Number>(part.constData())
                             : qFromLittleEndian<Number>(part.constData());
    }

    /// Empty if there are not as many.
    QByteArray bytes(qsizetype count)
    {
        m_isBroken = m_isBroken || count > m_bytes.size() - m_position;
        if (m_isBroken)
            return {};
        m_position += count;
        return m_bytes.sliced(m_position - count, count);
    }

    /// A text whose end lies on a multiple of four bytes.
    QByteArray padded(qsizetype count)
    {
        QByteArray text = bytes(count);
        bytes((4 - count % 4) % 4);
        return text;
    }

    bool isBroken() const { return m_isBroken; }

private:
    const QByteArray& m_bytes;
    qsizetype m_position = 0;
    bool m_isBigEndian;
    bool m_isBroken = false;
};

enum class Type : std::uint8_t { integer = 0, string = 1, color = 2 };

constexpr qsizetype colorSize = 8;

/// What a setting holds; nothing of a colour.
using Value = std::variant<std::monostate, std::uint32_t, QByteArray>;

/// Takes one value off the reader; nothing of a type that nobody knows, where the property cannot be read on.
std::optional<Value> readValue(Reader& reader, Type type)
{
    switch (type) {
    case Type::integer:
        return reader.number<std::uint32_t>();
    case Type::string:
        return reader.padded(reader.number<std::uint32_t>());
    case Type::color:
        reader.bytes(colorSize);
        return std::monostate();
    }
    return std::nullopt;
}

/// Shows every setting to `visit`; false if the property ends in one.
template <typename Visitor>
bool readSettings(const QByteArray& property, Visitor visit)
{
    constexpr char bigEndian = 1;
    Reader reader(property, !property.isEmpty() && property.front() == bigEndian);
    reader.bytes(4); // the byte order and what fills it up
    reader.number<std::uint32_t>(); // the serial number of the last change
    const auto count = reader.number<std::uint32_t>();
    for (std::uint32_t index = 0; index < count; ++index) {
        const auto type = static_cast<Type>(reader.number<std::uint8_t>());
        reader.bytes(1);
        const QByteArray name = reader.padded(reader.number<std::uint16_t>());
        reader.number<std::uint32_t>(); // when it was changed last
        const auto value = readValue(reader, type);
        if (!value || reader.isBroken())
            return false;
        visit(name, *value);
    }
    return true;
}

} // namespace

std::optional<bool> prefersDark(const QByteArray& property)
{
    std::optional<bool> result;
    const auto note = [&result](bool isDark) { result = result.value_or(false) || isDark; };
    const bool isWhole = readSettings(property, [&note](const QByteArray& name, const Value& value) {
        const auto* number = std::get_if<std::uint32_t>(&value);
        const auto* text = std::get_if<QByteArray>(&value);
        if (number && name == "Gtk/ApplicationPreferDarkTheme")
            note(*number != 0);
        else if (text && name == "Net/ThemeName")
            note(text->toLower().contains("dark"));
    });
    return isWhole ? result : std::nullopt;
}

QString iconThemeName(const QByteArray& property)
{
    QString result;
    const bool isWhole = readSettings(property, [&result](const QByteArray& name, const Value& value) {
        const auto* text = std::get_if<QByteArray>(&value);
        if (text && name == "Net/IconThemeName")
            result = QString::fromUtf8(*text);
    });
    return isWhole ? result : QString();
}

} // namespace Tavrin
