import QtQuick
import Tavrin

// One line of text.
FocusScope {
    id: root

    // What a screen reader says.
    required property string label
    property alias text: input.text
    property string placeholder
    property string symbol
    // A button that empties the field, while there is something in it.
    property bool isClearable: false
    property alias font: input.font

    // The user has changed the text.
    signal edited

    implicitWidth: 200
    implicitHeight: 30

    function selectAll(): void {
        input.selectAll();
    }

    function clear(): void {
        input.clear();
        edited();
        input.forceActiveFocus();
    }

    FieldGround {
        anchors.fill: parent
        isFocused: input.activeFocus
    }

    Symbol {
        id: symbol

        anchors.left: parent.left
        anchors.leftMargin: 9
        anchors.verticalCenter: parent.verticalCenter
        visible: root.symbol !== ""
        name: root.symbol
        size: 14
        color: Theme.secondaryText
    }

    TextInput {
        id: input

        anchors.left: parent.left
        anchors.leftMargin: root.symbol !== "" ? 31 : 10
        anchors.right: parent.right
        anchors.rightMargin: root.isClearable ? 30 : 10
        anchors.verticalCenter: parent.verticalCenter
        focus: true
        activeFocusOnTab: true
        clip: true
        selectByMouse: true
        color: Theme.text
        selectionColor: Theme.selection
        selectedTextColor: Theme.text
        font.pixelSize: 13

        maximumLength: 2147483647

        // Line breaks that were pasted become spaces, from the first to the last at once: such that it can
        // be undone, and quickly however many there are.
        function flatten(): void {
            const first = text.search(/[\r\n\u2028\u2029]/);
            if (first < 0)
                return;
            const rest = text.substring(first).match(/[^]*[\r\n\u2028\u2029]/)[0];
            const cursor = cursorPosition;
            const line = rest.replace(/\r\n|[\r\n\u2028\u2029]/g, " ");
            remove(first, first + rest.length);
            insert(first, line);
            cursorPosition = Math.min(length, cursor - (cursor >= first + rest.length ? rest.length - line.length : 0));
        }

        onTextEdited: {
            flatten();
            root.edited();
        }

        Accessible.role: Accessible.EditableText
        Accessible.name: root.label
        Accessible.description: root.placeholder
        Accessible.focusable: true

        HoverHandler {
            cursorShape: Qt.IBeamCursor
        }

        Label {
            anchors.fill: parent
            verticalAlignment: Text.AlignVCenter
            visible: input.text === "" && input.preeditText === ""
            text: root.placeholder
            color: Theme.placeholderText
            font: input.font
            Accessible.ignored: true
        }
    }

    IconButton {
        anchors.right: parent.right
        anchors.rightMargin: 1
        anchors.verticalCenter: parent.verticalCenter
        visible: root.isClearable && input.text !== ""
        activeFocusOnTab: false
        label: "Xoá"
        symbol: "xmark.circle.fill"
        onClicked: root.clear()
    }
}
