import QtQuick
import Tavrin

// One shortcut: what it is, and what can be done with it.
Item {
    id: root

    required property int index
    required property string name
    required property string combination
    required property string type
    required property string icon
    required property string description
    required property bool isEnabled
    // The row that keys go to, and whether the keyboard is in the list.
    required property bool isCurrent
    required property bool isListFocused

    readonly property color typeColor: Theme.typeColor(type, Theme.isDark)

    signal toggled
    signal edited
    signal deleted
    signal tested
    signal touched

    height: 50

    Accessible.role: Accessible.ListItem
    Accessible.name: name + " (" + combination + ")"
    Accessible.description: description
    Accessible.focusable: true
    Accessible.selectable: true
    Accessible.selected: isCurrent && isListFocused

    Card {
        anchors.fill: parent
        isEmphasised: pointer.hovered
        isFocused: root.isCurrent && root.isListFocused
    }

    HoverHandler {
        id: pointer
    }

    TapHandler {
        onTapped: root.touched()
        onDoubleTapped: root.edited()
    }

    Rectangle {
        id: circle

        anchors.left: parent.left
        anchors.leftMargin: 9
        anchors.verticalCenter: parent.verticalCenter
        width: 32
        height: 32
        radius: 16
        color: Theme.tint(root.typeColor, 0.15)
        opacity: root.isEnabled ? 1 : 0.5

        Symbol {
            anchors.centerIn: parent
            name: root.icon
            size: 16
            color: root.typeColor
        }
    }

    Label {
        id: nameLabel

        anchors.left: circle.right
        anchors.leftMargin: 12
        anchors.top: parent.top
        anchors.topMargin: 6
        width: Math.min(implicitWidth, controls.x - x - badge.width - 20)
        text: root.name
        font.pixelSize: 14
        color: root.isEnabled ? Theme.text : Theme.secondaryText
    }

    Badge {
        id: badge

        anchors.left: nameLabel.right
        anchors.leftMargin: 8
        anchors.verticalCenter: nameLabel.verticalCenter
        text: root.combination
        textSize: 10
    }

    Label {
        anchors.left: nameLabel.left
        anchors.right: controls.left
        anchors.rightMargin: 12
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 6
        text: root.description
        font.pixelSize: 12
        color: Theme.secondaryText
    }

    Row {
        id: controls

        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter

        IconButton {
            activeFocusOnTab: root.isCurrent || activeFocus
            label: "Chạy thử"
            toolTip: "Chạy thử phím tắt này ngay"
            symbol: "play.fill"
            size: 17
            color: Theme.greenSymbol
            onClicked: root.tested()
        }

        IconButton {
            activeFocusOnTab: root.isCurrent || activeFocus
            label: "Chỉnh sửa"
            symbol: "pencil"
            onClicked: root.edited()
        }

        IconButton {
            activeFocusOnTab: root.isCurrent || activeFocus
            label: "Xóa"
            toolTip: "Xóa phím tắt"
            symbol: "trash"
            onClicked: root.deleted()
        }

        Item {
            width: 10
            height: 1
        }

        Switch {
            anchors.verticalCenter: parent.verticalCenter
            activeFocusOnTab: root.isCurrent || activeFocus
            label: "Bật " + root.name
            isOn: root.isEnabled
            onFlipped: root.toggled()
        }
    }
}
