#include "Platform/Linux/Applications/ApplicationAliases.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace Tavrin {
namespace {

struct Row {
    std::string_view identifier;
    std::string_view name;
    DefaultRole role;
    /// Separated by spaces, the preferred first: distribution packages, then Flatpak, then Snap.
    std::string_view desktopIds;
    DefaultRole lastResort = DefaultRole::none;
};

using enum DefaultRole;

constexpr std::array rows{
    // Parts of the system.
    Row{"com.apple.Safari", "Safari", browser, "firefox firefox-esr google-chrome chromium"},
    Row{"com.apple.finder", "Finder", fileManager,
        "org.gnome.Nautilus org.kde.dolphin thunar nemo caja-browser pcmanfm-qt pcmanfm"},
    Row{"com.apple.Terminal", "Terminal", terminal, ""},
    Row{"com.googlecode.iterm2", "iTerm", terminal, ""},
    Row{"com.googlecode.iterm2", "iTerm2", terminal, ""},
    Row{"com.apple.TextEdit", "TextEdit", textEditor,
        "org.gnome.TextEditor org.gnome.gedit org.kde.kwrite org.kde.kate org.xfce.mousepad mousepad xed "
        "pluma"},
    Row{"com.apple.mail", "Mail", mail,
        "thunderbird org.mozilla.Thunderbird org.gnome.Evolution org.kde.kmail2 org.gnome.Geary"},
    Row{"com.apple.iCal", "Calendar", calendar,
        "org.gnome.Calendar org.kde.merkuro.calendar org.kde.korganizer"},
    Row{"com.apple.Preview", "Preview", documentViewer,
        "org.gnome.Evince org.gnome.Papers org.kde.okular atril xreader org.gnome.eog"},
    Row{"com.apple.Photos", "Photos", imageViewer,
        "org.gnome.Shotwell org.gnome.Photos org.kde.digikam org.gnome.Loupe org.gnome.eog org.kde.gwenview"},
    Row{"com.apple.QuickTimePlayerX", "QuickTime Player", videoPlayer, "org.gnome.Totem mpv vlc"},
    Row{"com.apple.TV", "TV", videoPlayer, "org.gnome.Totem mpv vlc"},
    Row{"com.apple.Music", "Music", musicPlayer,
        "rhythmbox org.gnome.Rhythmbox3 org.kde.elisa org.gnome.Music"},
    Row{"com.apple.iTunes", "iTunes", musicPlayer, "rhythmbox org.gnome.Rhythmbox3 org.kde.elisa"},
    Row{"com.apple.Notes", "Notes", none,
        "org.gnome.Notes bijiben org.gnome.Gnote gnote xfce4-notes org.kde.knotes xpad sticky"},
    Row{"com.apple.reminders", "Reminders", none,
        "org.gnome.Todo org.gnome.Endeavour io.github.alainm23.planify"},
    Row{"com.apple.AddressBook", "Contacts", none, "org.gnome.Contacts org.kde.kaddressbook"},
    Row{"com.apple.Maps", "Maps", none, "org.gnome.Maps org.kde.marble"},
    Row{"com.apple.clock", "Clock", none, "org.gnome.clocks org.kde.kclock"},
    Row{"com.apple.weather", "Weather", none, "org.gnome.Weather org.kde.kweather"},
    Row{"com.apple.calculator", "Calculator", none,
        "org.gnome.Calculator gnome-calculator org.kde.kcalc mate-calc galculator qalculate-gtk"},
    Row{"com.apple.systempreferences", "System Preferences", none,
        "org.gnome.Settings gnome-control-center systemsettings kdesystemsettings xfce-settings-manager "
        "matecc "
        "cinnamon-settings lxqt-config"},
    Row{"com.apple.systempreferences", "System Settings", none,
        "org.gnome.Settings gnome-control-center systemsettings kdesystemsettings xfce-settings-manager "
        "matecc "
        "cinnamon-settings lxqt-config"},
    Row{"com.apple.ActivityMonitor", "Activity Monitor", none,
        "org.gnome.SystemMonitor gnome-system-monitor org.kde.plasma-systemmonitor org.kde.ksysguard "
        "mate-system-monitor xfce4-taskmanager qps"},
    Row{"com.apple.DiskUtility", "Disk Utility", none,
        "org.gnome.DiskUtility org.kde.partitionmanager gparted"},
    Row{"com.apple.Console", "Console", none, "org.gnome.Logs org.kde.ksystemlog"},
    Row{"com.apple.FontBook", "Font Book", none, "org.gnome.font-viewer org.kde.kfontview"},
    Row{"com.apple.PhotoBooth", "Photo Booth", none,
        "org.gnome.Cheese org.gnome.Snapshot org.kde.kamoso guvcview"},
    Row{"com.apple.VoiceMemos", "Voice Memos", none, "org.gnome.SoundRecorder org.kde.krecorder"},
    Row{"com.apple.AppStore", "App Store", none, "org.gnome.Software org.kde.discover snap-store_snap-store"},
    Row{"com.apple.screenshot.launcher", "Screenshot", none,
        "org.gnome.Screenshot org.kde.spectacle xfce4-screenshooter mate-screenshot org.flameshot.Flameshot"},
    Row{"com.apple.iWork.Pages", "Pages", none, "libreoffice-writer org.libreoffice.LibreOffice.writer"},
    Row{"com.apple.iWork.Numbers", "Numbers", none, "libreoffice-calc org.libreoffice.LibreOffice.calc"},
    Row{"com.apple.iWork.Keynote", "Keynote", none,
        "libreoffice-impress org.libreoffice.LibreOffice.impress"},
    // Browsers.
    Row{"com.google.Chrome", "Google Chrome", none,
        "google-chrome google-chrome-stable com.google.Chrome chromium chromium-browser "
        "org.chromium.Chromium "
        "chromium_chromium",
        // One of the shortcuts that everybody has after the first start.
        browser},
    Row{"org.chromium.Chromium", "Chromium", none,
        "chromium chromium-browser org.chromium.Chromium chromium_chromium google-chrome"},
    Row{"org.mozilla.firefox", "Firefox", none, "firefox firefox-esr org.mozilla.firefox firefox_firefox"},
    Row{"org.mozilla.firefoxdeveloperedition", "Firefox Developer Edition", none,
        "firefox-developer-edition firefoxdeveloperedition firefox"},
    Row{"com.microsoft.edgemac", "Microsoft Edge", none,
        "microsoft-edge microsoft-edge-stable com.microsoft.Edge"},
    Row{"com.brave.Browser", "Brave Browser", none, "brave-browser brave com.brave.Browser brave_brave"},
    Row{"com.operasoftware.Opera", "Opera", none, "opera com.opera.Opera opera_opera"},
    Row{"com.vivaldi.Vivaldi", "Vivaldi", none, "vivaldi-stable vivaldi com.vivaldi.Vivaldi"},
    Row{"org.torproject.torbrowser", "Tor Browser", none, "torbrowser org.torproject.torbrowser-launcher"},
    // Talking and writing.
    Row{"com.tinyspeck.slackmacgap", "Slack", none, "slack com.slack.Slack slack_slack"},
    Row{"ru.keepcoder.Telegram", "Telegram", none,
        "org.telegram.desktop telegramdesktop telegram-desktop telegram-desktop_telegram-desktop"},
    Row{"com.tdesktop.Telegram", "Telegram Desktop", none,
        "org.telegram.desktop telegramdesktop telegram-desktop telegram-desktop_telegram-desktop"},
    Row{"com.hnc.Discord", "Discord", none, "discord com.discordapp.Discord discord_discord"},
    Row{"us.zoom.xos", "zoom.us", none, "Zoom us.zoom.Zoom zoom-client_zoom-client"},
    Row{"org.whispersystems.signal-desktop", "Signal", none,
        "signal-desktop org.signal.Signal signal-desktop_signal-desktop"},
    Row{"net.whatsapp.WhatsApp", "WhatsApp", none,
        "whatsapp-desktop-linux_whatsapp-desktop-linux com.rtosta.zapzap"},
    Row{"com.skype.skype", "Skype", none, "skypeforlinux com.skype.Client skype_skypeforlinux"},
    Row{"com.microsoft.teams2", "Microsoft Teams", none,
        "teams-for-linux com.github.IsmaelMartinez.teams_for_linux teams"},
    Row{"org.mozilla.thunderbird", "Thunderbird", none,
        "thunderbird org.mozilla.Thunderbird net.thunderbird.Thunderbird thunderbird_thunderbird"},
    Row{"com.vng.zalo", "Zalo", none, "zalo Zalo"},
    // Programming.
    Row{"com.microsoft.VSCode", "Visual Studio Code", none,
        "code com.visualstudio.code code_code code-oss codium com.vscodium.codium"},
    Row{"com.vscodium", "VSCodium", none, "codium com.vscodium.codium codium_codium"},
    Row{"com.todesktop.230313mzl4w4u92", "Cursor", none, "cursor"},
    Row{"dev.zed.Zed", "Zed", none, "dev.zed.Zed zed"},
    Row{"com.sublimetext.4", "Sublime Text", none, "sublime_text com.sublimetext.three sublime-text_subl"},
    Row{"com.jetbrains.intellij", "IntelliJ IDEA", none,
        "jetbrains-idea com.jetbrains.IntelliJ-IDEA-Ultimate intellij-idea-ultimate_intellij-idea-ultimate"},
    Row{"com.jetbrains.intellij.ce", "IntelliJ IDEA CE", none,
        "jetbrains-idea-ce com.jetbrains.IntelliJ-IDEA-Community "
        "intellij-idea-community_intellij-idea-community"},
    Row{"com.jetbrains.pycharm", "PyCharm", none, "jetbrains-pycharm com.jetbrains.PyCharm-Professional"},
    Row{"com.google.android.studio", "Android Studio", none,
        "jetbrains-studio android-studio com.google.AndroidStudio android-studio_android-studio"},
    Row{"com.postmanlabs.mac", "Postman", none, "postman com.getpostman.Postman postman_postman"},
    Row{"com.docker.docker", "Docker", none, "docker-desktop"},
    Row{"com.mitchellh.ghostty", "Ghostty", none, "com.mitchellh.ghostty"},
    Row{"net.kovidgoyal.kitty", "kitty", none, "kitty"},
    Row{"org.alacritty", "Alacritty", none, "Alacritty org.alacritty.Alacritty"},
    Row{"com.github.wez.wezterm", "WezTerm", none, "org.wezfurlong.wezterm"},
    // Media and office.
    Row{"com.spotify.client", "Spotify", none, "spotify com.spotify.Client spotify_spotify"},
    Row{"org.videolan.vlc", "VLC", none, "vlc org.videolan.VLC vlc_vlc"},
    Row{"com.colliderli.iina", "IINA", none, "mpv io.mpv.Mpv io.github.celluloid_player.Celluloid"},
    Row{"org.gimp.gimp-2.10", "GIMP", none, "gimp org.gimp.GIMP gimp_gimp"},
    Row{"org.gimp.gimp", "GIMP", none, "gimp org.gimp.GIMP gimp_gimp"},
    Row{"org.inkscape.Inkscape", "Inkscape", none, "org.inkscape.Inkscape inkscape inkscape_inkscape"},
    Row{"org.blenderfoundation.blender", "Blender", none, "blender org.blender.Blender blender_blender"},
    Row{"com.obsproject.obs-studio", "OBS", none, "com.obsproject.Studio obs obs-studio_obs-studio"},
    Row{"org.audacityteam.audacity", "Audacity", none, "audacity org.audacityteam.Audacity"},
    Row{"com.figma.Desktop", "Figma", none, "figma-linux io.github.Figma_Linux.figma_linux"},
    Row{"org.libreoffice.script", "LibreOffice", none,
        "libreoffice-startcenter org.libreoffice.LibreOffice libreoffice_libreoffice"},
    Row{"com.microsoft.Word", "Microsoft Word", none,
        "libreoffice-writer org.libreoffice.LibreOffice.writer"},
    Row{"com.microsoft.Excel", "Microsoft Excel", none, "libreoffice-calc org.libreoffice.LibreOffice.calc"},
    Row{"com.microsoft.Powerpoint", "Microsoft PowerPoint", none,
        "libreoffice-impress org.libreoffice.LibreOffice.impress"},
    Row{"com.microsoft.Outlook", "Microsoft Outlook", mail, "thunderbird org.gnome.Evolution"},
    Row{"notion.id", "Notion", none, "notion-app notion-app-enhanced notion-snap-reborn_notion-snap-reborn"},
    Row{"md.obsidian", "Obsidian", none, "obsidian md.obsidian.Obsidian obsidian_obsidian"},
    Row{"com.bitwarden.desktop", "Bitwarden", none, "bitwarden com.bitwarden.desktop bitwarden_bitwarden"},
    Row{"com.1password.1password", "1Password", none, "1password com.onepassword.OnePassword"},
    Row{"org.keepassxc.keepassxc", "KeePassXC", none, "org.keepassxc.KeePassXC keepassxc_keepassxc"},
    Row{"com.valvesoftware.steam", "Steam", none, "steam com.valvesoftware.Steam"},
    Row{"org.m0k.transmission", "Transmission", none,
        "transmission-gtk transmission-qt com.transmissionbt.Transmission"},
};

bool sameText(QStringView left, std::string_view right)
{
    return left.compare(
               QLatin1StringView(right.data(), static_cast<qsizetype>(right.size())), Qt::CaseInsensitive)
        == 0;
}

std::optional<ApplicationAlias> findRow(std::string_view Row::*column, QStringView value)
{
    const auto* const row = std::find_if(
        rows.begin(), rows.end(), [&](const Row& each) { return sameText(value, each.*column); });
    if (row == rows.end())
        return std::nullopt;
    const auto ids
        = QString::fromLatin1(row->desktopIds.data(), static_cast<qsizetype>(row->desktopIds.size()));
    return ApplicationAlias{row->role, ids.split(u' ', Qt::SkipEmptyParts), row->lastResort};
}

} // namespace

std::optional<ApplicationAlias> aliasOfIdentifier(QStringView bundleIdentifier)
{
    return findRow(&Row::identifier, bundleIdentifier);
}

std::optional<ApplicationAlias> aliasOfName(QStringView name)
{
    return findRow(&Row::name, name);
}

} // namespace Tavrin
