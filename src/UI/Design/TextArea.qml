import QtQuick
import Tavrin

// Several lines of text, which scroll.
FocusScope {
    id: root

    // What a screen reader says.
    required property string label
    readonly property alias text: edit.text
    // The text as it is to be. What comes in later than at first can be undone.
    property string source
    property alias font: edit.font
    property alias wrapMode: edit.wrapMode
    // What changes the text is not the user.
    property bool isTaking: true

    // The user has changed the text.
    signal edited

    implicitWidth: 200
    implicitHeight: 110

    onSourceChanged: {
        if (!isTaking)
            take(source);
    }
    Component.onCompleted: {
        edit.text = source;
        isTaking = false;
        Viewport.drawOnlyVisiblePart(edit);
    }

    function take(text: string): void {
        const old = edit.text;
        if (text === old)
            return;
        isTaking = true;
        if (text.startsWith(old)) {
            edit.insert(edit.length, text.substring(old.length));
        } else {
            edit.remove(0, edit.length);
            edit.insert(0, text);
        }
        edit.cursorPosition = edit.length;
        isTaking = false;
    }

    FieldGround {
        anchors.fill: parent
        isFocused: edit.activeFocus
    }

    Flickable {
        id: view

        anchors.fill: parent
        anchors.margins: 2
        contentWidth: width
        contentHeight: edit.height
        boundsBehavior: Flickable.StopAtBounds
        clip: true

        // Keeps the cursor, in coordinates of the text, in view.
        function follow(cursor: rect): void {
            const top = cursor.y - edit.padding;
            const bottom = cursor.y + cursor.height + edit.padding;
            if (top < contentY)
                contentY = top;
            else if (bottom > contentY + height)
                contentY = bottom - height;
        }

        TextEdit {
            id: edit

            width: view.width
            height: Math.max(view.height, implicitHeight)
            padding: 7
            focus: true
            activeFocusOnTab: true
            textFormat: TextEdit.PlainText
            wrapMode: TextEdit.Wrap
            selectByMouse: true
            color: Theme.text
            selectionColor: Theme.selection
            selectedTextColor: Theme.text
            font.pixelSize: 13

            onTextChanged: {
                if (!root.isTaking)
                    root.edited();
            }
            onCursorRectangleChanged: view.follow(cursorRectangle)

            // Tab goes on to the next control, as everywhere else.
            Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
            Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)

            Accessible.role: Accessible.EditableText
            Accessible.multiLine: true
            Accessible.name: root.label
            Accessible.focusable: true

            HoverHandler {
                cursorShape: Qt.IBeamCursor
            }
        }
    }

    ScrollBar {
        view: view
    }
}
