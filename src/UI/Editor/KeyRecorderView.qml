pragma ComponentBehavior: Bound

import QtQuick
import Tavrin

// Shows a key combination, and records another one.
Item {
    id: root

    required property KeyRecorder recorder

    implicitHeight: 38

    Pressable {
        id: field

        anchors.left: parent.left
        anchors.right: clear.visible ? clear.left : record.left
        anchors.rightMargin: clear.visible ? 4 : 10
        height: parent.height
        activeFocusOnTab: false
        label: {
            if (root.recorder.isRecording)
                return prompt.text;
            return root.recorder.isAssigned ? root.recorder.modifierBadges.concat(root.recorder.keyBadge).join(" ") : none.text;
        }
        onClicked: root.recorder.start()

        Accessible.description: "Tổ hợp phím tắt"

        Rectangle {
            anchors.fill: parent
            radius: 8
            color: root.recorder.isRecording ? Theme.tint(Theme.accent, 0.12) : Theme.field
            border.width: root.recorder.isRecording ? 2 : 1
            border.color: root.recorder.isRecording ? Theme.accent : Theme.fieldBorder
        }

        Row {
            anchors.left: parent.left
            anchors.leftMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            visible: root.recorder.isRecording
            spacing: 8

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: "record.circle"
                size: 15
                color: Theme.accentText
            }

            Label {
                id: prompt

                anchors.verticalCenter: parent.verticalCenter
                text: "Nhấn tổ hợp phím bất kỳ..."
                font.weight: Font.Medium
                color: Theme.accentText
            }
        }

        Label {
            id: none

            anchors.left: parent.left
            anchors.leftMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            visible: !root.recorder.isRecording && !root.recorder.isAssigned
            text: "Chưa gán phím tắt"
            color: Theme.secondaryText
        }

        Row {
            anchors.left: parent.left
            anchors.leftMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            visible: !root.recorder.isRecording
            spacing: 6

            Repeater {
                model: root.recorder.modifierBadges

                KeyBadge {
                    required property string modelData

                    text: modelData
                }
            }

            KeyBadge {
                visible: text !== ""
                text: root.recorder.keyBadge
                isPrimary: true
            }
        }
    }

    IconButton {
        id: clear

        anchors.right: record.left
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        visible: root.recorder.isAssigned
        label: "Xoá phím tắt"
        toolTip: "Xoá phím tắt"
        symbol: "xmark.circle.fill"
        onClicked: root.recorder.clear()
    }

    PillButton {
        id: record

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        width: 92
        height: parent.height
        text: root.recorder.isRecording ? "Hủy" : "Ghi phím"
        onClicked: root.recorder.toggle()
    }
}
