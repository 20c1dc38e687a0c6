#include "UI/Design/Lazy.h"

#include <QQmlContext>
#include <QQmlEngine>

namespace Tavrin {

Lazy::~Lazy() = default;

void Lazy::setComponent(QQmlComponent* component)
{
    if (m_component == component)
        return;
    m_component = component;
    Q_EMIT componentChanged();
    update();
}

void Lazy::setActive(bool isActive)
{
    if (m_isActive == isActive)
        return;
    m_isActive = isActive;
    Q_EMIT activeChanged();
    update();
}

void Lazy::componentComplete()
{
    QQuickItem::componentComplete();
    update();
}

void Lazy::update()
{
    if (!isComponentComplete())
        return;
    const bool isWanted = m_isActive && (m_component || !m_source.isEmpty());
    if (isWanted == !m_item.isNull())
        return;
    if (isWanted)
        return create();
    // Something of the item may be under way that has led here.
    m_item->disconnect(this);
    m_item->setVisible(false);
    m_item->deleteLater();
    m_item = nullptr;
    setImplicitHeight(0);
    Q_EMIT itemChanged();
}

void Lazy::create()
{
    if (m_component)
        return place(*m_component, m_component->creationContext());
    QQmlContext* context = qmlContext(this);
    QQmlComponent component(
        qmlEngine(this), context->resolvedUrl(m_source), QQmlComponent::PreferSynchronous);
    place(component, context);
}

void Lazy::place(QQmlComponent& component, QQmlContext* context)
{
    QObject* object = component.beginCreate(context);
    m_item = qobject_cast<QQuickItem*>(object);
    if (!m_item) {
        delete object;
        qWarning() << component.errors();
        return;
    }
    if (m_content)
        component.setInitialProperties(object, {{QStringLiteral("content"), QVariant::fromValue(m_content)}});
    m_item->setParent(this);
    m_item->setParentItem(this);
    m_item->setSize(size());
    component.completeCreate();
    const auto followHeight = [this] { setImplicitHeight(m_item->implicitHeight()); };
    connect(m_item, &QQuickItem::implicitHeightChanged, this, followHeight);
    followHeight();
    Q_EMIT itemChanged();
}

void Lazy::geometryChange(const QRectF& geometry, const QRectF& before)
{
    QQuickItem::geometryChange(geometry, before);
    if (m_item)
        m_item->setSize(geometry.size());
}

} // namespace Tavrin
