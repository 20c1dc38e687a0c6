import QtQuick
import Tavrin

// Asks before a shortcut is deleted.
Alert {
    id: root

    required property ContentModel content

    title: "Xác nhận xóa phím tắt"
    message: root.content.deleteMessage
    confirmText: "Xóa phím tắt"
    onDismissed: root.content.cancelDelete()
    onConfirmed: root.content.confirmDelete()
}
