#include "Platform/Linux/LinuxScriptPresets.h"

#include "MakerData.h"
#include "Platform/Linux/Applications/Terminals.h"

namespace Tavrin {
namespace {

// Users read and change these, so each is short and stands alone. Not one of them says that it did what it
// did not do.

/// Without an answer from outside, the address in the local network.
QString showAddress()
{
    return QStringLiteral(R"zsh(IP=$(curl -sf --max-time 2 %1) ||
  IP=$(ip -4 -o address show scope global | awk '{ sub("/.*", "", $4); print $4; exit }')
[[ -n $IP ]] || IP=$(hostname -I | awk '{ print $1 }')
if [[ -n $IP ]]; then
  notify-send "Tavrin Network" "Địa chỉ IP máy: $IP"
else
  notify-send "Tavrin Network" "Không lấy được địa chỉ IP: máy chưa nối mạng"
fi)zsh")
        .arg(QLatin1String(MakerData::ipEchoAddress));
}

/// GNOME heeds only its own session's locks for the display. X11's own timers know of no lock at all: they
/// are set back before the shortest of them, a minute, is over.
QString keepAwake()
{
    return QStringLiteral(
        R"zsh(hold=(systemd-inhibit --what=idle:sleep --who=Tavrin --why="Chống ngủ máy 1 giờ")
if [[ $XDG_CURRENT_DESKTOP == *GNOME* ]] && (( $+commands[gnome-session-inhibit] )); then
  hold+=(gnome-session-inhibit --inhibit idle:suspend)
fi
if $hold true; then
  $hold zsh -fc 'for i in {1..72}; do xset s reset 2>/dev/null; sleep 50; done' >/dev/null 2>&1 &
  notify-send "Tavrin Inhibit" "Chế độ chống ngủ máy đã kích hoạt trong 1 giờ"
else
  notify-send "Tavrin Inhibit" "Không bật được chế độ chống ngủ máy"
fi)zsh");
}

/// What is not written to disk yet cannot be dropped.
QString freeMemory()
{
    return QStringLiteral(R"zsh(sync
if pkexec /sbin/sysctl vm.drop_caches=3 >/dev/null; then
  notify-send "Tavrin Memory" "Đã dọn dẹp bộ nhớ đệm RAM thành công"
else
  notify-send "Tavrin Memory" "Không dọn dẹp được bộ nhớ đệm RAM: cần quyền quản trị"
fi)zsh");
}

QString newNote()
{
    return QStringLiteral(R"zsh(if (( $+commands[gnote] )); then
  gnote --new-note
elif (( $+commands[bijiben] )); then
  bijiben --new-note
elif (( $+commands[xpad] )); then
  xpad --new
else
  folder=$(xdg-user-dir DOCUMENTS) || folder=$HOME
  note="$folder/Ghi chú $(date "+%Y-%m-%d %H.%M.%S").txt"
  mkdir -p "$folder" && touch "$note" && xdg-open "$note"
fi || notify-send "Tavrin Notes" "Không tạo được ghi chú mới")zsh");
}

/// Whichever service keeps the answers; only the first lets everybody flush it.
QString flushNames()
{
    return QStringLiteral(R"zsh(if resolvectl flush-caches 2>/dev/null ||
    { pgrep -x nscd >/dev/null && pkexec /usr/sbin/nscd --invalidate=hosts } ||
    { pgrep -x dnsmasq >/dev/null && pkexec pkill -HUP -x dnsmasq }; then
  notify-send "Tavrin Network" "Đã xóa DNS Cache thành công"
else
  notify-send "Tavrin Network" "Không xóa được DNS Cache: không có bộ đệm nào hoặc chưa được phép"
fi)zsh");
}

QString restartPanel()
{
    return QStringLiteral(
        R"zsh(replace() { (( $+commands[$1] )) && setsid --fork $1 --replace >/dev/null 2>&1 }
case $XDG_CURRENT_DESKTOP:$XDG_SESSION_TYPE in
  *GNOME*:wayland) false ;;
  *GNOME*) replace gnome-shell ;;
  *KDE*) systemctl --user restart plasma-plasmashell || replace plasmashell ;;
  *XFCE*) xfce4-panel --restart ;;
  *MATE*) replace mate-panel ;;
  *Cinnamon*) replace cinnamon ;;
  *) pkill -USR1 -x tint2 || pkill -USR2 -x waybar || polybar-msg cmd restart ;;
esac || notify-send "Tavrin Panel" "Không khởi động lại được thanh panel của phiên làm việc này")zsh");
}

/// The file managers that tell where they are tell it by FileManager1; of the others it is the home folder.
QString terminalAtFolder()
{
    return QStringLiteral(
        R"zsh(folder=$HOME
files=(org.freedesktop.FileManager1 --object-path /org/freedesktop/FileManager1)
open=$(gdbus call --session --timeout 3 --dest $files --method org.freedesktop.DBus.Properties.Get \
  org.freedesktop.FileManager1 OpenWindowsWithLocations 2>/dev/null)
if [[ $open =~ "'file://(/[^']*)'|\"file://(/[^\"]*)\"" ]]; then
  printf -v folder %b "${${match[1]:-$match[2]}//\%/\\x}"
fi
cd -- $folder 2>/dev/null || cd
for terminal in $TERMINAL %1; do
  whence -p -- $terminal >/dev/null && exec setsid --fork $terminal >/dev/null 2>&1
done
notify-send "Tavrin Terminal" "Không tìm thấy chương trình terminal nào")zsh")
        .arg(knownTerminalPrograms().join(u' '));
}

} // namespace

const std::vector<ScriptPreset>& linuxScriptPresets()
{
    static const std::vector<ScriptPreset> presets{
        {
            QStringLiteral("Xem IP mạng (Thông báo)"),
            QStringLiteral("Lấy IP public/nội bộ và hiện notification trên màn hình"),
            QStringLiteral("network"),
            showAddress(),
        },
        {
            QStringLiteral("Chống ngủ máy 1 giờ (systemd-inhibit)"),
            QStringLiteral("Giữ máy luôn sáng và không sleep trong 60 phút"),
            QStringLiteral("cup.and.saucer.fill"),
            keepAwake(),
        },
        {
            QStringLiteral("Giải phóng RAM (Purge Memory)"),
            QStringLiteral("Dọn dẹp bộ nhớ đệm cache giúp tăng tốc hệ thống"),
            QStringLiteral("memorychip"),
            freeMemory(),
        },
        {
            QStringLiteral("Tạo ghi chú mới trong ứng dụng ghi chú"),
            QStringLiteral("Mở ứng dụng ghi chú và lập tức tạo 1 trang ghi chú trắng"),
            QStringLiteral("note.text.badge.plus"),
            newNote(),
        },
        {
            QStringLiteral("Xóa DNS Cache (Flush DNS)"),
            QStringLiteral("Xóa sạch bộ đệm DNS khi gặp lỗi mạng hoặc đổi host"),
            QStringLiteral("bolt.horizontal.fill"),
            flushNames(),
        },
        {
            QStringLiteral("Khởi động lại thanh panel & khay hệ thống"),
            QStringLiteral("Khắc phục hiện tượng giật lag thanh panel hoặc icon khay hệ thống"),
            QStringLiteral("arrow.counterclockwise.circle"),
            restartPanel(),
        },
        {
            QStringLiteral("Mở Terminal tại thư mục trình quản lý tệp đang xem"),
            QStringLiteral("Mở ngay cửa sổ Terminal và cd vào folder đang mở trong trình quản lý tệp"),
            QStringLiteral("terminal.fill"),
            terminalAtFolder(),
        },
    };
    return presets;
}

} // namespace Tavrin
