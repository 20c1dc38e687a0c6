#include "Platform/Linux/Applications/Terminals.h"

#include <gmock/gmock.h>

namespace Tavrin {
namespace {

struct Case {
    const char* command;
    const char* words;
};

class TerminalTable : public testing::TestWithParam<Case> { };

TEST_P(TerminalTable, KnowsHowACommandIsHandedOver)
{
    const auto split = [](const char* text) { return QString::fromLatin1(text).split(u' '); };
    EXPECT_EQ(terminalWords(split(GetParam().command)), split(GetParam().words));
}

INSTANTIATE_TEST_SUITE_P(Known, TerminalTable,
    testing::Values(Case{"xterm", "xterm -e"}, Case{"/usr/bin/gnome-terminal", "/usr/bin/gnome-terminal --"},
        Case{"konsole", "konsole -e"}, Case{"kgx", "kgx -e"}, Case{"xfce4-terminal", "xfce4-terminal -x"},
        Case{"kitty", "kitty"}, Case{"foot", "foot"}, Case{"xdg-terminal-exec", "xdg-terminal-exec"},
        // What an entry has behind a known one opens a window of its own.
        Case{"wezterm start --cwd .", "wezterm start --"}, Case{"ptyxis --new-window", "ptyxis --"},
        Case{"/opt/own/terminal", "/opt/own/terminal -e"},
        Case{"flatpak run org.x.Terminal", "flatpak run org.x.Terminal -e"}));

TEST(TerminalEntry, PutsTheTerminalInFrontOfTheCommand)
{
    const QStringList terminal{QStringLiteral("/opt/100% own/term"), QStringLiteral("-e")};
    EXPECT_EQ(execInTerminal(terminal, R"(top "hai từ" %f %% %c)", "/x.desktop"),
        R"('/opt/100%% own/term' '-e' top "hai từ" %f %% %c)");
}

TEST(TerminalEntry, NamesTheFileThatGioDoesNotKnow)
{
    const QStringList terminal{QStringLiteral("xterm")};
    EXPECT_EQ(
        execInTerminal(terminal, "a %k %%k", "/o'ne 5%.desktop"), R"('xterm' a '/o'\''ne 5%%.desktop' %%k)");
    EXPECT_EQ(execInTerminal(terminal, "a %", "/x"), "'xterm' a %");
}

} // namespace
} // namespace Tavrin
