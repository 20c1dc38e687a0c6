import QtQuick
import Tavrin

// A question that cannot be taken back once answered with yes. The keyboard starts on the way out.
Sheet {
    id: root

    required property string title
    required property string message
    required property string confirmText

    signal confirmed

    label: title
    sheetWidth: 400
    sheetHeight: column.height + 40

    Accessible.role: Accessible.AlertMessage
    Accessible.description: message

    Column {
        id: column

        x: 22
        y: 20
        width: parent.width - 44
        spacing: 10

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "exclamationmark.triangle.fill"
            size: 32
            color: Theme.red
        }

        Label {
            width: parent.width
            text: root.title
            horizontalAlignment: Text.AlignHCenter
            font.pixelSize: 15
            font.weight: Font.Bold
        }

        Label {
            width: parent.width
            text: root.message
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            maximumLineCount: 8
            color: Theme.secondaryText
        }

        Item {
            width: 1
            height: 2
        }

        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 10

            PillButton {
                width: 150
                focus: true
                text: "Hủy"
                onClicked: root.dismissed()
            }

            PillButton {
                width: 150
                text: root.confirmText
                kind: PillButton.Destructive
                onClicked: root.confirmed()
            }
        }
    }
}
