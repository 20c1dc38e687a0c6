pragma ComponentBehavior: Bound

import QtQuick
import Tavrin

Rectangle {
    id: root

    required property ContentModel content

    color: "#f5f5f7"

    Accessible.role: Accessible.Pane
    Accessible.name: "Tavrin"

    // The window's "Close Window" command; the program decides what closing means.
    Shortcut {
        sequences: ["Ctrl+W"]
        onActivated: root.Window.window.close()
    }

    Rectangle {
        id: header

        width: parent.width
        height: 72
        color: "#fafafc"

        Label {
            id: title

            anchors.left: parent.left
            anchors.leftMargin: 18
            anchors.top: parent.top
            anchors.topMargin: 14
            text: "Tavrin"
            font.pixelSize: 18
            font.bold: true
        }

        Badge {
            anchors.left: title.right
            anchors.leftMargin: 10
            anchors.verticalCenter: title.verticalCenter
            text: "v" + root.content.currentVersion
            color: "#d9ebff"
            textColor: "#0057b8"
        }

        Label {
            anchors.left: title.left
            anchors.top: title.bottom
            anchors.topMargin: 3
            text: "Trình quản lý phím tắt toàn cục Native macOS"
            font.pixelSize: 12
            color: "#5f5f64"
        }
    }

    Rectangle {
        anchors.top: header.bottom
        width: parent.width
        height: 1
        color: "#dcdce0"
    }

    ListView {
        id: list

        anchors.fill: parent
        anchors.topMargin: header.height + 1
        topMargin: 12
        bottomMargin: 12
        leftMargin: 18
        rightMargin: 18
        spacing: 6
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        reuseItems: true
        model: root.content.shortcuts
        focus: true

        Keys.onUpPressed: list.flick(0, 600)
        Keys.onDownPressed: list.flick(0, -600)

        Accessible.role: Accessible.List
        Accessible.name: "Phím tắt"

        delegate: ShortcutRow {
            width: list.width - list.leftMargin - list.rightMargin
        }
    }

    Label {
        anchors.centerIn: list
        visible: root.content.shortcuts.count === 0
        text: root.content.emptyTitle
        font.pixelSize: 14
        color: "#5f5f64"
    }
}
