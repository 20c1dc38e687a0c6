import QtQuick
import Tavrin

// A place with nothing in it: why, and the way on.
Item {
    id: root

    required property string symbol
    required property string title
    property string buttonText
    property real symbolSize: 48

    signal clicked

    Column {
        anchors.centerIn: parent
        spacing: 14

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: root.symbol
            size: root.symbolSize
            color: Theme.secondaryText
            opacity: 0.6
        }

        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            text: root.title
            font.pixelSize: 15
            color: Theme.secondaryText
        }

        PillButton {
            anchors.horizontalCenter: parent.horizontalCenter
            visible: text !== ""
            text: root.buttonText
            kind: PillButton.Prominent
            onClicked: root.clicked()
        }
    }
}
