#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>
#include <optional>

/// What the targets of a selection mean: the names under which programs offer what they hold (Inter-Client
/// Communication Conventions Manual, "Use of Target Atoms", and MIME types).
namespace Tavrin::SelectionTargets {

inline constexpr char utf8String[] = "UTF8_STRING";
inline constexpr char latin1String[] = "STRING";
inline constexpr char anyText[] = "TEXT";
inline constexpr char plainText[] = "text/plain";
inline constexpr char plainUtf8Text[] = "text/plain;charset=utf-8";

/// Beside contents that clipboard managers are not to keep; its data is "secret" then. KDE's name, which
/// the other desktops' managers have taken over.
inline constexpr char passwordManagerHint[] = "x-kde-passwordManagerHint";
inline constexpr char secret[] = "secret";

/// Those of the offered targets that give the plain text, the one that loses least first.
QByteArrayList textTargets(const QByteArrayList& offered);

/// Those that are to be kept beside the plain text, in the offered order: MIME types without plain text,
/// and the hint for clipboard managers, which a password must not lose. Of a picture that is offered in
/// many encodings one is enough: png, or else the first. Nothing is asked for twice.
QByteArrayList formatTargets(const QByteArrayList& offered);

/// The text in `data`, which an owner handed over as `type` when asked for `target`; nothing if that type
/// is no text that can be read.
std::optional<QString> decodeText(const QByteArray& target, const QByteArray& type, const QByteArray& data);

} // namespace Tavrin::SelectionTargets
