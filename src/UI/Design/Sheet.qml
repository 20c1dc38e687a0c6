import QtQuick
import Tavrin

// What is put before the window and wants an answer first: dims what it covers and keeps the keyboard.
// What it covers is for its owner to disable.
FocusScope {
    id: root

    // What a screen reader says.
    required property string label
    // As large as this, or as the window has room for.
    required property real sheetWidth
    required property real sheetHeight
    default property alias parts: panel.data

    // The user wants it gone.
    signal dismissed

    focus: true

    Accessible.role: Accessible.Dialog
    Accessible.name: label

    Keys.onEscapePressed: dismissed()

    Component.onCompleted: forceActiveFocus()

    Rectangle {
        anchors.fill: parent
        color: Theme.dim

        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.AllButtons
            hoverEnabled: true
            onWheel: wheel => wheel.accepted = true
        }
    }

    Rectangle {
        id: panel

        anchors.centerIn: parent
        width: Math.min(root.sheetWidth, root.width - 24)
        height: Math.min(root.sheetHeight, root.height - 24)
        radius: 11
        color: Theme.sheet
        border.width: 1
        border.color: Theme.fieldBorder

        // A press beside its controls stays in the sheet.
        MouseArea {
            anchors.fill: parent
        }
    }
}
