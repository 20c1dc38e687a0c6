import QtQuick
import Tavrin

// Parts of a page that belong together, under a heading, on a card.
Card {
    id: root

    property string symbol
    required property string title
    property color tint: Theme.accentText
    default property alias parts: column.data

    implicitHeight: heading.height + column.height + 38

    Row {
        id: heading

        x: 14
        y: 12
        spacing: 8

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.symbol !== ""
            name: root.symbol
            size: 17
            color: root.tint
        }

        Label {
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, root.width - 60)
            text: root.title
            font.pixelSize: 14
            font.weight: Font.Bold
        }
    }

    Column {
        id: column

        x: 14
        anchors.top: heading.bottom
        anchors.topMargin: 12
        width: parent.width - 28
        spacing: 10
    }
}
