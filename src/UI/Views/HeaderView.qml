import QtQuick
import Tavrin

// The product, how it is doing, and the way to a new shortcut.
Rectangle {
    id: root

    required property ContentModel content
    // The keyboard is in the row of tabs.
    readonly property bool isChoosingTab: tabs.activeFocus

    signal addRequested

    implicitHeight: 106
    color: Theme.bar

    LogoTile {
        id: tile

        x: 18
        y: 13
        symbol: "command.square.fill"
    }

    Row {
        id: title

        anchors.left: tile.right
        anchors.leftMargin: 12
        anchors.top: tile.top
        anchors.topMargin: -1
        spacing: 8

        Label {
            text: "Tavrin"
            font.pixelSize: 18
            font.weight: Font.Bold
        }

        Badge {
            anchors.verticalCenter: parent.verticalCenter
            text: "v" + root.content.currentVersion
            color: Theme.tint(Theme.accent, 0.15)
            textColor: Theme.accentText
        }

        Row {
            anchors.verticalCenter: parent.verticalCenter
            visible: !root.content.isPaused
            spacing: 5

            Rectangle {
                anchors.verticalCenter: parent.verticalCenter
                width: 6
                height: 6
                radius: 3
                color: Theme.greenSymbol
            }

            Label {
                text: "Đang hoạt động"
                font.pixelSize: 11
                color: Theme.green
            }
        }

        Badge {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.content.isPaused
            text: "TẠM DỪNG"
            textSize: 10
            isBold: true
            color: Theme.tint(Theme.orange, 0.2)
            textColor: Theme.orange
        }
    }

    Label {
        anchors.left: title.left
        anchors.right: add.left
        anchors.rightMargin: 12
        anchors.bottom: tile.bottom
        text: "Trình quản lý phím tắt toàn cục Native macOS"
        font.pixelSize: 12
        color: Theme.secondaryText
    }

    PillButton {
        id: add

        anchors.right: parent.right
        anchors.rightMargin: 18
        anchors.verticalCenter: tile.verticalCenter
        text: "Thêm Phím Tắt"
        symbol: "plus"
        kind: PillButton.Prominent
        onClicked: root.addRequested()
    }

    SegmentedControl {
        id: tabs

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: tile.bottom
        anchors.topMargin: 13
        label: "Mục"
        titles: root.content.tabTitles
        symbols: root.content.tabSymbols
        current: root.content.selectedTab
        onChosen: index => root.content.selectTab(index)
    }

    Divider {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
    }
}
