import QtQuick
import Tavrin

// The heading of a part of a form.
Label {
    font.pixelSize: 13
    font.weight: Font.Bold

    Accessible.role: Accessible.Heading
}
