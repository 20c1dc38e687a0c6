import QtQuick
import Tavrin

// Which application is opened.
FormField {
    id: root

    required property EditorModel editor

    text: "Ứng dụng sẽ mở:"

    Connections {
        target: root.editor

        function onPickingChanged(): void {
            if (root.editor.isPicking)
                return;
            if (root.editor.isApplicationChosen)
                change.forceActiveFocus();
            else
                choose.forceActiveFocus();
        }
    }

    PillButton {
        id: choose

        width: parent.width
        implicitHeight: 48
        visible: !root.editor.isApplicationChosen
        text: "Bấm vào đây để chọn Ứng dụng từ danh sách..."
        symbol: "plus.app.fill"
        onClicked: root.editor.chooseApplication()
    }

    Card {
        width: parent.width
        height: 48
        visible: root.editor.isApplicationChosen

        ApplicationIcon {
            id: icon

            x: 10
            anchors.verticalCenter: parent.verticalCenter
            source: root.editor.applicationIcon
        }

        Label {
            anchors.left: icon.right
            anchors.leftMargin: 10
            anchors.right: change.left
            anchors.rightMargin: 10
            anchors.verticalCenter: parent.verticalCenter
            text: root.editor.applicationName
            elide: Text.ElideMiddle
            font.weight: Font.Medium
        }

        PillButton {
            id: change

            anchors.right: parent.right
            anchors.rightMargin: 9
            anchors.verticalCenter: parent.verticalCenter
            text: "Đổi Ứng Dụng..."
            onClicked: root.editor.chooseApplication()
        }
    }
}
