#pragma once

#include <QPointer>
#include <QQmlComponent>
#include <QQuickItem>
#include <QtQmlIntegration>

namespace Tavrin {

/// Has an item only while that is wanted, and gives it its own size; its own height, where nothing else
/// says it, is the item's, and none without one. In place of the toolkit's loader, which in Qt 6.4 cannot
/// make a component that is bound to the place where it is written. What is made from a source costs nothing
/// before: the types of a component that is written in place are read with their file.
class Lazy : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_CLASSINFO("DefaultProperty", "component")
    Q_PROPERTY(QQmlComponent* component READ component WRITE setComponent NOTIFY componentChanged FINAL)
    /// The file to make the item from, relative to that where this is written, in place of a component; it is
    /// given `content` as its property.
    Q_PROPERTY(QUrl source MEMBER m_source FINAL)
    Q_PROPERTY(QObject* content MEMBER m_content FINAL)
    Q_PROPERTY(bool active READ isActive WRITE setActive NOTIFY activeChanged FINAL)
    /// Null while there is none.
    Q_PROPERTY(QQuickItem* item READ item NOTIFY itemChanged FINAL)

public:
    using QQuickItem::QQuickItem;
    ~Lazy() override;

    QQmlComponent* component() const { return m_component; }
    void setComponent(QQmlComponent* component);
    bool isActive() const { return m_isActive; }
    void setActive(bool isActive);
    QQuickItem* item() const { return m_item; }

Q_SIGNALS:
    void componentChanged();
    void activeChanged();
    void itemChanged();

protected:
    void componentComplete() override;
    void geometryChange(const QRectF& geometry, const QRectF& before) override;

private:
    void update();
    void create();
    void place(QQmlComponent& component, QQmlContext* context);

    QQmlComponent* m_component = nullptr;
    QUrl m_source;
    QObject* m_content = nullptr;
    QPointer<QQuickItem> m_item;
    bool m_isActive = false;
};

} // namespace Tavrin
