#pragma once

/// The scripts of the table of system actions, for zsh. Errors go to standard error, the first line in words.
namespace Tavrin::SystemActionScripts {

// gdbus, gsettings and their kin are programs of their own: what they load of the desktop's libraries ends
// with them.
/// Put in front of every script.
inline constexpr auto sharedFunctions = R"zsh(
setopt extended_glob
# A service that does not answer keeps the script waiting until it is ended, except where that is said.
bus() { gdbus call --session --timeout ${patience:-20} --dest $1 --object-path $2 --method "${@[3,-1]}" }
names() { bus org.freedesktop.DBus /org/freedesktop/DBus org.freedesktop.DBus.$1 "${@[2,-1]}" }
fail() { print -u2 -r -- $1; exit 1 }
# Starts a program that outlives us.
detach() { setsid --fork "$@" </dev/null >/dev/null 2>&1 }
# leave NAME COMMAND...: asks the name's owner to quit, waits until it has, and ends it if it does not.
leave() {
  local patience=3 was=$(names GetNameOwner $1 2>/dev/null) pid left=30
  [[ -n $was ]] || return 0
  pid=$(names GetConnectionUnixProcessID $1)
  "${@[2,-1]}" >/dev/null 2>&1
  while [[ $(names GetNameOwner $1 2>/dev/null) == $was ]]; do
    (( left-- )) || { kill -KILL ${${pid##* }%%[^0-9]*}; return }
    sleep 0.1
  done
}
# Turns a setting that is on or off; one that was never set is off.
toggle_setting() {
  if [[ $(gsettings get $1 $2) == true ]]; then gsettings set $1 $2 false; else gsettings set $1 $2 true; fi
}
# sibling NAME AMONG...: REPLY becomes the one of the same family that is dark if NAME is light, and the
# other way round.
brightness() { [[ ${1:l} == *dark* ]] && REPLY=dark || REPLY=light }
family() { REPLY=${${1:l}//[-_ ]#(dark|light)/} }
sibling() {
  local current=$1 kin shade candidate
  family $current; kin=$REPLY
  brightness $current; shade=$REPLY
  for candidate in ${(o)@[2,-1]}; do
    family $candidate; [[ $REPLY == $kin ]] || continue
    brightness $candidate; [[ $REPLY != $shade ]] || continue
    REPLY=$candidate; return
  done
  fail "Không có giao diện sáng/tối cùng họ với “$current”"
}
themes() {
  local data=(${XDG_DATA_HOME:-$HOME/.local/share} ${(s.:.)${XDG_DATA_DIRS:-/usr/local/share:/usr/share}})
  # A theme for the programs, not one for the frames alone. Adwaita is built into them.
  reply=(Adwaita $HOME/.themes/*/gtk-3*(N-/:h:t) ${^data}/themes/*/gtk-3*(N-/:h:t))
}
toggle_theme_setting() {
  themes
  sibling ${(Q)"$(gsettings get $1 $2)"} $reply && gsettings set $1 $2 "'$REPLY'"
}
dolphins() { names ListNames | grep -o 'org\.kde\.dolphin-[0-9]*' }
)zsh";

inline constexpr auto lockLoginSession = R"zsh(
session() { gdbus call --system --timeout 20 --dest org.freedesktop.login1 --object-path $1 --method "${@[2,-1]}" }
manager=/org/freedesktop/login1
[[ -n $XDG_SESSION_ID ]] && session $manager org.freedesktop.login1.Manager.LockSession $XDG_SESSION_ID 2>/dev/null ||
  session $manager/session/auto org.freedesktop.login1.Session.Lock)zsh";

inline constexpr auto toggleColorScheme = R"zsh(
schema=org.gnome.desktop.interface
if [[ $(gsettings get $schema color-scheme) == "'prefer-dark'" ]]; then next=default; else next=prefer-dark; fi
gsettings set $schema color-scheme $next)zsh";

// The list marks the current one; in the user's language if it is let.
inline constexpr auto togglePlasmaColors = R"zsh(
list=$(LC_ALL=C LANGUAGE=C plasma-apply-colorscheme --list-schemes) || fail "$list"
schemes=(${${(M)${(f)list}:#[[:space:]]#\**}##[[:space:]]#\*[[:space:]]#})
sibling ${${(M)schemes:#* \(current*}% \(*} ${schemes% \(*} && plasma-apply-colorscheme $REPLY)zsh";

inline constexpr auto toggleXfceTheme = R"zsh(
current=$(xfconf-query --channel xsettings --property /Net/ThemeName 2>/dev/null) || current=Adwaita
themes
sibling $current $reply &&
  xfconf-query --channel xsettings --property /Net/ThemeName --create --type string --set $REPLY)zsh";

inline constexpr auto toggleThunarHidden = R"zsh(
property=(--channel thunar --property /last-show-hidden)
if [[ $(xfconf-query $property 2>/dev/null) == true ]]; then next=false; else next=true; fi
xfconf-query $property --create --type bool --set $next)zsh";

// Windows that are open have an action for it, which also writes the file; without a window only the file is
// there.
inline constexpr auto toggleDolphinHidden = R"zsh(
running=($(dolphins))
for name in $running; do
  for window in $(bus $name /dolphin org.freedesktop.DBus.Introspectable.Introspect | grep -o 'Dolphin_[0-9]*'); do
    bus $name /dolphin/$window org.kde.KMainWindow.activateAction show_hidden_files || exit
  done
done
(( $#running )) && exit
for version in 6 5; do (( $+commands[kwriteconfig$version] )) && break; done
key=(--file ${XDG_DATA_HOME:-$HOME/.local/share}/dolphin/view_properties/global/.directory
  --group Settings --key HiddenFilesShown)
if [[ $(kreadconfig$version $key) == true ]]; then next=false; else next=true; fi
kwriteconfig$version $key --type bool $next)zsh";

inline constexpr auto toggleShellOverview = R"zsh(
overview() { bus org.gnome.Shell /org/gnome/Shell org.freedesktop.DBus.Properties.$1 org.gnome.Shell OverviewActive "${@[2,-1]}" }
now=$(overview Get) || exit
if [[ $now == *true* ]]; then overview Set '<false>'; else overview Set '<true>'; fi)zsh";

inline constexpr auto restartDolphin = R"zsh(
for name in $(dolphins); do leave $name bus $name /MainApplication org.qtproject.Qt.QCoreApplication.quit; done
detach dolphin)zsh";

inline constexpr auto restartPlasmaShell = R"zsh(
unit=plasma-plasmashell.service
systemctl --user --quiet is-active $unit 2>/dev/null && exec systemctl --user restart $unit
leave org.kde.plasmashell bus org.kde.plasmashell /MainApplication org.qtproject.Qt.QCoreApplication.quit
detach plasmashell)zsh";

// Each of them reads its configuration anew and draws itself again on its own signal.
inline constexpr auto restartBars = R"zsh(
pkill -USR1 -x -u $UID tint2; local found=$?
pkill -USR2 -x -u $UID waybar && found=0
(( $+commands[polybar-msg] )) && polybar-msg cmd restart >/dev/null 2>&1 && found=0
(( $found )) && (( $+commands[swaymsg] )) && [[ -n $SWAYSOCK ]] && exec swaymsg reload
(( $found == 0 )) || fail "Không thấy thanh nào đang chạy: tint2, waybar, polybar")zsh";

// The new panel ends at once if it starts before the old one has let go of the name: then none is left.
inline constexpr auto restartXfcePanel = R"zsh(
panel() { names GetNameOwner org.xfce.Panel 2>/dev/null }
was=$(panel)
xfce4-panel --restart || exit
for look in {1..30}; do
  now=$(panel)
  [[ -n $now && $now != $was ]] && exit
  sleep 0.1
done
detach xfce4-panel)zsh";

} // namespace Tavrin::SystemActionScripts
