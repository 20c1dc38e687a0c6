pragma ComponentBehavior: Bound

import QtQuick
import Tavrin

// Choosing one of the applications of this machine, or another by its file.
Sheet {
    id: root

    required property AppPickerModel picker
    readonly property bool isFinished: picker.isFinished

    // The sheet's work is done, or the user does not want it.
    signal closed

    label: "Chọn Ứng Dụng"
    sheetWidth: 480
    sheetHeight: 500

    onDismissed: closed()
    onIsFinishedChanged: closed()

    SheetHeader {
        id: header

        width: parent.width
        title: "Chọn Ứng Dụng"
        subtitle: "Chọn app trên máy để gán vào phím tắt"

        PillButton {
            text: "Đóng"
            onClicked: root.closed()
        }
    }

    TextField {
        id: search

        anchors.left: parent.left
        anchors.leftMargin: 20
        anchors.right: parent.right
        anchors.rightMargin: 20
        anchors.top: header.bottom
        anchors.topMargin: 12
        focus: true
        label: "Tìm ứng dụng"
        placeholder: "Tìm ứng dụng (Chrome, Terminal, Telegram...)"
        symbol: "magnifyingglass"
        isClearable: true
        text: root.picker.searchText
        onEdited: {
            root.picker.searchText = text;
            list.showFirst();
        }

        Keys.onPressed: event => list.handleKey(event)
    }

    Divider {
        id: edge

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: search.bottom
        anchors.topMargin: 12
    }

    Item {
        anchors.fill: list
        visible: root.picker.isLoading

        Column {
            anchors.centerIn: parent
            spacing: 14

            Spinner {
                anchors.horizontalCenter: parent.horizontalCenter
            }

            Label {
                anchors.horizontalCenter: parent.horizontalCenter
                text: "Đang quét ứng dụng trên máy..."
                color: Theme.secondaryText
            }
        }
    }

    EmptyState {
        anchors.fill: list
        visible: !root.picker.isLoading && root.picker.count === 0
        symbol: "questionmark.app.dashed"
        symbolSize: 40
        title: "Không tìm thấy ứng dụng phù hợp"
    }

    ListView {
        id: list

        function showFirst(): void {
            currentIndex = count > 0 ? 0 : -1;
            positionViewAtBeginning();
        }

        // The keys of a list that mean nothing to a field of one line.
        function handleKey(event: KeyEvent): void {
            const page = Math.max(1, Math.floor(height / 48) - 1);
            if (!visible)
                return;
            if (event.key === Qt.Key_Down)
                currentIndex = Math.min(count - 1, currentIndex + 1);
            else if (event.key === Qt.Key_Up)
                currentIndex = Math.max(0, currentIndex - 1);
            else if (event.key === Qt.Key_PageDown)
                currentIndex = Math.min(count - 1, currentIndex + page);
            else if (event.key === Qt.Key_PageUp)
                currentIndex = Math.max(0, currentIndex - page);
            else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
                root.picker.choose(currentIndex);
            else
                return;
            event.accepted = true;
        }

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: edge.bottom
        anchors.bottom: footer.top
        leftMargin: 10
        rightMargin: 12
        topMargin: 6
        bottomMargin: 6
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        reuseItems: true
        highlightMoveDuration: 0
        visible: !root.picker.isLoading && root.picker.count > 0
        activeFocusOnTab: true
        model: root.picker

        Accessible.role: Accessible.List
        Accessible.name: "Ứng dụng"

        Keys.onPressed: event => {
            if (event.key === Qt.Key_Home)
                currentIndex = 0;
            else if (event.key === Qt.Key_End)
                currentIndex = count - 1;
            else if (event.key === Qt.Key_Space)
                root.picker.choose(currentIndex);
            else
                return handleKey(event);
            event.accepted = true;
        }

        delegate: AppRowItem {
            width: list.width - list.leftMargin - list.rightMargin
            isCurrent: ListView.isCurrentItem
            isListFocused: list.activeFocus
            // A row that waits for its next use must not be read out.
            ListView.onPooled: visible = false
            ListView.onReused: visible = true
            onTouched: list.currentIndex = index
            onChosen: root.picker.choose(index)
        }
    }

    ScrollBar {
        view: list
    }

    Item {
        id: footer

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: 54

        Divider {
            anchors.left: parent.left
            anchors.right: parent.right
        }

        Label {
            anchors.left: parent.left
            anchors.leftMargin: 20
            anchors.right: buttons.left
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            text: root.picker.totals
            font.pixelSize: 11
            color: Theme.secondaryText
        }

        Row {
            id: buttons

            anchors.right: parent.right
            anchors.rightMargin: 20
            anchors.verticalCenter: parent.verticalCenter
            spacing: 8

            PillButton {
                text: "Duyệt file từ ổ cứng..."
                symbol: "folder"
                onClicked: root.picker.browse()
            }

            PillButton {
                text: "Hủy"
                onClicked: root.closed()
            }
        }
    }
}
