import QtQuick
import Tavrin

// A symbol on a tinted ground, what it stands for, and a sentence about it.
Item {
    id: root

    required property string symbol
    required property string title
    required property string description
    property color tint: Theme.accentText
    // A text alone, of the weight that running text has.
    property bool isTip: false

    implicitHeight: Math.max(34, texts.implicitHeight)

    Rectangle {
        id: ground

        anchors.verticalCenter: parent.verticalCenter
        width: 34
        height: 34
        radius: 9
        color: Theme.tint(root.tint, 0.15)

        Symbol {
            anchors.centerIn: parent
            name: root.symbol
            size: 17
            color: root.tint
        }
    }

    Column {
        id: texts

        anchors.left: ground.right
        anchors.leftMargin: 12
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        Prose {
            width: parent.width
            text: root.title
            font.pixelSize: root.isTip ? 12 : 13
            font.weight: root.isTip ? Font.Normal : Font.DemiBold
        }

        Prose {
            width: parent.width
            visible: text !== ""
            text: root.description
            font.pixelSize: 12
            color: Theme.secondaryText
        }
    }
}
