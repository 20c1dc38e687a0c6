import QtQuick
import Tavrin

// A page of the wizard: what it is about, then its own parts.
ScrollPage {
    id: root

    required property string title
    required property string text
    property string symbol

    padding: 24
    verticalPadding: 14
    spacing: 14
    // Titles stay where they are from page to page; the first one has a picture above it.
    lowestTop: symbol === "" ? 24 : Infinity

    LogoTile {
        anchors.horizontalCenter: parent.horizontalCenter
        visible: symbol !== ""
        symbol: root.symbol
        width: 64
    }

    Column {
        width: parent.width
        spacing: 5

        Label {
            width: parent.width
            text: root.title
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            font.pixelSize: 20
            font.weight: Font.Bold
            Accessible.role: Accessible.Heading
        }

        Prose {
            width: parent.width
            text: root.text
            isCentered: true
            color: Theme.secondaryText
        }

        Item {
            width: 1
            height: 1
        }
    }
}
