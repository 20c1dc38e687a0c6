#include "Platform/Linux/Appearance/XSettingsValues.h"

#include <QtEndian>
#include <cstdint>

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
        const QByteArray text = bytes(count);
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

/// Takes one value off the reader, and into `result` what it says; false if the property ends in it.
bool readValue(Reader& reader, Type type, const QByteArray& name, std::optional<bool>& result)
{
    const auto note = [&result](bool isDark) { result = result.value_or(false) || isDark; };
    switch (type) {
    case Type::integer: {
        const auto value = reader.number<std::uint32_t>();
        if (name == "Gtk/ApplicationPreferDarkTheme")
            note(value != 0);
        break;
    }
    case Type::string: {
        const QByteArray value = reader.padded(reader.number<std::uint32_t>());
        if (name == "Net/ThemeName")
            note(value.toLower().contains("dark"));
        break;
    }
    case Type::color:
        reader.bytes(colorSize);
        break;
    default:
        return false;
    }
    return !reader.isBroken();
}

} // namespace

std::optional<bool> prefersDark(const QByteArray& property)
{
    constexpr char bigEndian = 1;
    Reader reader(property, !property.isEmpty() && property.front() == bigEndian);
    reader.bytes(4); // the byte order and what fills it up
    reader.number<std::uint32_t>(); // the serial number of the last change
    const auto count = reader.number<std::uint32_t>();
    std::optional<bool> result;
    for (std::uint32_t index = 0; index < count; ++index) {
        const auto type = static_cast<Type>(reader.number<std::uint8_t>());
        reader.bytes(1);
        const QByteArray name = reader.padded(reader.number<std::uint16_t>());
        reader.number<std::uint32_t>(); // when it was changed last
        if (!readValue(reader, type, name, result))
            return std::nullopt;
    }
    return result;
}

} // namespace Tavrin
