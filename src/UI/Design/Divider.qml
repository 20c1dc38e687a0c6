import QtQuick
import Tavrin

Rectangle {
    implicitHeight: 1
    color: Theme.separator
}
