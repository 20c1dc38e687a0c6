import QtQuick
import Tavrin

// Whether there is a newer build, and the way to it.
Section {
    id: root

    required property AuthorModel author

    title: "Cập nhật ứng dụng"

    Item {
        width: parent.width
        implicitHeight: 32

        Label {
            anchors.left: parent.left
            anchors.right: control.left
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            text: "Kiểm tra phiên bản mới nhất từ máy chủ"
            font.pixelSize: 12
            color: Theme.secondaryText
        }

        // Keeps the keyboard while the button that had it is away.
        FocusScope {
            id: control

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            implicitWidth: Math.max(spinner.visible ? spinner.width : 0, download.visible ? download.width : 0,
                                    update.visible ? update.width : 0, check.visible ? check.width : 0)
            implicitHeight: 30

            Spinner {
                id: spinner

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                visible: root.author.updateState === AuthorModel.Checking
            }

            Row {
                id: download

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                visible: root.author.updateState === AuthorModel.Updating
                spacing: 10

                ProgressBar {
                    anchors.verticalCenter: parent.verticalCenter
                    label: "Tiến độ tải bản cập nhật"
                    value: root.author.updateProgress
                }

                Label {
                    anchors.verticalCenter: parent.verticalCenter
                    width: 40
                    horizontalAlignment: Text.AlignRight
                    text: root.author.updatePercentage
                    font.weight: Font.DemiBold
                    color: Theme.accentText
                }
            }

            PillButton {
                id: update

                anchors.right: parent.right
                visible: root.author.updateState === AuthorModel.UpdateAvailable
                text: "Cập nhật ngay"
                kind: PillButton.Prominent
                onVisibleChanged: control.handOver(update)
                onClicked: root.author.startUpdate()
            }

            PillButton {
                id: check

                anchors.right: parent.right
                visible: root.author.updateState === AuthorModel.Idle
                text: "Kiểm tra cập nhật"
                symbol: "arrow.triangle.2.circlepath"
                onVisibleChanged: control.handOver(check)
                onClicked: root.author.checkForUpdates()
            }

            function handOver(button: Item): void {
                if (button.visible && activeFocus)
                    button.forceActiveFocus();
            }
        }
    }

    Label {
        width: parent.width
        visible: text !== ""
        text: root.author.updateStatus
        wrapMode: Text.Wrap
        font.pixelSize: 12
        color: Theme.secondaryText
    }

    Label {
        width: parent.width
        visible: text !== ""
        text: root.author.releaseTitle
        font.weight: Font.DemiBold
    }

    Label {
        width: parent.width
        visible: text !== ""
        text: root.author.releaseNotes
        wrapMode: Text.Wrap
        font.pixelSize: 12
    }
}
