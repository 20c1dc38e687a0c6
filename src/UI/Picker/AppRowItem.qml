import QtQuick
import Tavrin

// One application to choose.
Item {
    id: root

    required property int index
    required property string name
    required property string detail
    required property string icon
    // The row that the keys act on, and whether the keyboard is in the list.
    required property bool isCurrent
    required property bool isListFocused

    signal touched
    signal chosen

    height: 48

    Accessible.role: Accessible.ListItem
    Accessible.name: name
    Accessible.description: detail
    Accessible.focusable: true
    Accessible.selectable: true
    Accessible.selected: isCurrent
    Accessible.onPressAction: chosen()

    Rectangle {
        anchors.fill: parent
        radius: 7
        color: root.isCurrent ? Theme.tint(Theme.accentText, 0.16) : pointer.hovered ? Theme.well : "transparent"
    }

    HoverHandler {
        id: pointer
    }

    FocusRing {
        gap: 0
        radius: 7
        visible: root.isCurrent && root.isListFocused
    }

    TapHandler {
        onTapped: root.touched()
        onDoubleTapped: root.chosen()
    }

    ApplicationIcon {
        id: picture

        anchors.left: parent.left
        anchors.leftMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        source: root.icon
    }

    Column {
        anchors.left: picture.right
        anchors.leftMargin: 12
        anchors.right: button.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        Label {
            width: parent.width
            text: root.name
            font.weight: Font.DemiBold
            Accessible.ignored: true
        }

        Label {
            width: parent.width
            text: root.detail
            font.pixelSize: 11
            color: Theme.secondaryText
            Accessible.ignored: true
        }
    }

    PillButton {
        id: button

        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        // The row itself takes the keys.
        activeFocusOnTab: false
        implicitHeight: 26
        textSize: 12
        text: "Chọn"
        onClicked: root.chosen()
    }
}
