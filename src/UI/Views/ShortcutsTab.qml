pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Tavrin

// The shortcuts: finding one, and what can be done with each.
FocusScope {
    id: root

    required property ContentModel content

    signal addRequested
    signal editRequested(row: int)

    function focusSearch(): void {
        search.forceActiveFocus(Qt.ShortcutFocusReason);
        search.selectAll();
    }

    TextField {
        id: search

        anchors.left: parent.left
        anchors.leftMargin: 18
        anchors.right: filter.left
        anchors.rightMargin: 10
        y: 10
        label: "Tìm kiếm"
        placeholder: "Tìm kiếm theo tên, phím tắt hoặc mục tiêu..."
        symbol: "magnifyingglass"
        isClearable: true
        text: root.content.searchText
        onEdited: root.content.searchText = text

        Keys.onDownPressed: list.forceActiveFocus()
        Keys.onEscapePressed: event => {
            event.accepted = text !== "";
            clear();
        }
    }

    Picker {
        id: filter

        anchors.right: parent.right
        anchors.rightMargin: 18
        anchors.verticalCenter: search.verticalCenter
        width: 204
        label: "Loại hành động"
        titles: root.content.filterTitles
        current: root.content.selectedFilter
        onChosen: index => root.content.selectedFilter = index
    }

    ListView {
        id: list

        // What a screen reader says.
        readonly property string label: "Danh sách phím tắt"

        anchors.top: search.bottom
        anchors.topMargin: 10
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: footer.top
        leftMargin: 18
        rightMargin: 18
        bottomMargin: 10
        spacing: 6
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        reuseItems: true
        // Rows beyond what is seen: enough for a step of the wheel.
        cacheBuffer: 60
        highlightMoveDuration: 0
        highlightFollowsCurrentItem: true
        keyNavigationEnabled: true
        model: root.content.shortcuts
        focus: true
        visible: count > 0

        Accessible.role: Accessible.List
        Accessible.name: label

        // Coming back begins at the row, in sight, and not at the button of it that was left last.
        onActiveFocusChanged: {
            if (activeFocus)
                positionViewAtIndex(currentIndex, ListView.Contain);
            else if (Window.active && currentItem)
                currentItem.focus = true;
        }

        Keys.onReturnPressed: root.editRequested(currentIndex)
        Keys.onEnterPressed: root.editRequested(currentIndex)
        Keys.onSpacePressed: root.content.toggle(currentIndex)
        Keys.onDeletePressed: root.content.askToDelete(currentIndex)
        Keys.onPressed: event => {
            const page = Math.max(1, Math.floor(height / 56));
            if (event.key === Qt.Key_Home)
                currentIndex = 0;
            else if (event.key === Qt.Key_End)
                currentIndex = count - 1;
            else if (event.key === Qt.Key_PageDown)
                currentIndex = Math.min(count - 1, currentIndex + page);
            else if (event.key === Qt.Key_PageUp)
                currentIndex = Math.max(0, currentIndex - page);
            else
                return;
            event.accepted = true;
        }

        delegate: ShortcutRow {
            width: list.width - list.leftMargin - list.rightMargin
            isCurrent: ListView.isCurrentItem
            activeFocusOnTab: isCurrent || activeFocus
            isListFocused: list.activeFocus
            // A row that waits to be used again is still there for a screen reader otherwise.
            ListView.onPooled: visible = false
            ListView.onReused: visible = true
            onTouched: {
                list.currentIndex = index;
                list.forceActiveFocus(Qt.MouseFocusReason);
            }
            onToggled: root.content.toggle(index)
            onEdited: root.editRequested(index)
            onDeleted: root.content.askToDelete(index)
            onTested: root.content.test(index)
        }
    }

    ScrollBar {
        view: list
    }

    EmptyState {
        anchors.fill: list
        visible: list.count === 0
        symbol: "keyboard"
        title: root.content.emptyTitle
        buttonText: root.content.emptyButton
        onClicked: {
            if (root.content.isStoreEmpty)
                root.addRequested();
            else
                root.content.clearFilter();
        }
    }

    FooterView {
        id: footer

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        content: root.content
    }
}
