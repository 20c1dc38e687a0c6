// The tray of lxqt-panel, which closes an open menu whose entries change their numbers.
#include "support/PanelTest.h"

namespace Tavrin {
namespace {

std::unique_ptr<Testing::Program> startPanel()
{
    return std::make_unique<Testing::Program>(QStringLiteral("lxqt-panel"), QStringList());
}

class TrayInLxqtPanel : public Testing::PanelTest {
protected:
    void SetUp() override
    {
        writeConfiguration(QStringLiteral("lxqt/panel.conf"), R"([General]
__userfile__=true
panels=panel1

[panel1]
desktop=0
iconSize=22
panelSize=32
plugins=statusnotifier
position=Bottom
width=100
width-percent=true

[statusnotifier]
alignment=Left
type=statusnotifier
)");
        panel = startPanel();
    }

    std::unique_ptr<Testing::Program> panel;
};

TEST_F(TrayInLxqtPanel, ShowsAnIconThatIsClicked)
{
    expectIconAndActivation();
}

TEST_F(TrayInLxqtPanel, OpensAMenuThatStaysOpen)
{
    item.show();
    expectMenuThatStaysOpen(QStringLiteral("lxqt"));
}

TEST_F(TrayInLxqtPanel, ShowsTheIconAgainAfterARestart)
{
    item.show();
    expectReturn(panel, startPanel);
}

} // namespace
} // namespace Tavrin
