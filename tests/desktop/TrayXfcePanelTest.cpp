// The tray of xfce4-panel, which serves StatusNotifierItem and XEmbed in one.
#include "support/PanelTest.h"

namespace Tavrin {
namespace {

std::unique_ptr<Testing::Program> startPanel()
{
    return std::make_unique<Testing::Program>(
        QStringLiteral("xfce4-panel"), QStringList(QStringLiteral("--disable-wm-check")));
}

class TrayInXfcePanel : public Testing::PanelTest {
protected:
    void SetUp() override
    {
        writeConfiguration(QStringLiteral("xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml"),
            R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=10;x=640;y=780"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="32"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="systray"/>
  </property>
</channel>
)");
        panel = startPanel();
    }

    std::unique_ptr<Testing::Program> panel;
};

TEST_F(TrayInXfcePanel, ShowsAnIconThatIsClicked)
{
    expectIconAndActivation();
}

TEST_F(TrayInXfcePanel, OpensAMenuThatStaysOpen)
{
    item.show();
    expectMenuThatStaysOpen(QStringLiteral("xfce"));
}

TEST_F(TrayInXfcePanel, ShowsTheIconAgainAfterARestart)
{
    item.show();
    expectReturn(panel, startPanel);
}

} // namespace
} // namespace Tavrin
