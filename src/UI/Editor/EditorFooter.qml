import QtQuick
import Tavrin

// What is missing, and the ways out of the editor.
Item {
    id: root

    required property EditorModel editor

    implicitHeight: 58 + (error.visible ? error.height + 14 : 0)

    Divider {
        anchors.left: parent.left
        anchors.right: parent.right
    }

    Row {
        id: error

        x: 20
        y: 14
        width: parent.width - 40
        visible: root.editor.errorMessage !== ""
        spacing: 8

        Symbol {
            id: symbol

            y: 1
            name: "exclamationmark.triangle.fill"
            size: 15
            color: Theme.red
        }

        Label {
            width: parent.width - symbol.width - parent.spacing
            text: root.editor.errorMessage
            wrapMode: Text.Wrap
            font.weight: Font.Medium
            color: Theme.red

            Accessible.role: Accessible.AlertMessage
        }
    }

    Row {
        anchors.right: parent.right
        anchors.rightMargin: 20
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 14
        spacing: 10

        PillButton {
            width: 90
            text: "Hủy"
            onClicked: root.editor.dismiss()
        }

        PillButton {
            text: root.editor.saveTitle
            kind: PillButton.Prominent
            onClicked: root.editor.save()
        }
    }
}
