import QtQuick
import QtQuick.Window

// Brings the control that gets the keyboard into the sight of a view that scrolls.
Item {
    id: root

    required property Flickable view

    readonly property Item focused: Window.activeFocusItem

    onFocusedChanged: {
        if (focused)
            reveal(focused);
    }

    function reveal(item: Item): void {
        // What has the keyboard is a part of a control; the whole of it is to be seen.
        let control = item;
        while (control && !(control instanceof FocusScope))
            control = control.parent;
        let ancestor = control;
        while (ancestor && ancestor !== view.contentItem)
            ancestor = ancestor.parent;
        if (!ancestor)
            return;
        // With what it is called, above it.
        const top = control.mapToItem(view.contentItem, 0, 0).y - 28;
        const bottom = top + 28 + control.height + 16;
        const last = Math.max(0, view.contentHeight - view.height);
        if (top < view.contentY)
            view.contentY = Math.max(0, top);
        else if (bottom > view.contentY + view.height)
            view.contentY = Math.min(last, bottom - view.height);
    }
}
