import QtQuick
import Tavrin

// The window's tool tip: fills the window, shows itself below the control (above, where there is no room).
Item {
    id: root

    Rectangle {
        readonly property Item target: ToolTip.target

        visible: target !== null
        width: Math.min(label.implicitWidth + 16, root.width - 16)
        height: label.height + 10
        radius: 5
        color: Theme.tip

        onTargetChanged: {
            if (!target)
                return;
            const middle = target.mapToItem(root, target.width / 2, 0);
            const below = middle.y + target.height + 6;
            x = Math.max(8, Math.min(root.width - width - 8, middle.x - width / 2));
            y = below + height <= root.height ? below : middle.y - height - 6;
        }

        Label {
            id: label

            anchors.centerIn: parent
            width: parent.width - 16
            text: ToolTip.text
            wrapMode: Text.Wrap
            font.pixelSize: 11
            color: Theme.tipText
        }
    }
}
