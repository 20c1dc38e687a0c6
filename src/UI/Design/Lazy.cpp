#include "UI/Design/Lazy.h"

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
    const bool isWanted = m_isActive && m_component;
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
    QObject* object = m_component->beginCreate(m_component->creationContext());
    m_item = qobject_cast<QQuickItem*>(object);
    if (!m_item) {
        delete object;
        qWarning() << m_component->errors();
        return;
    }
    m_item->setParent(this);
    m_item->setParentItem(this);
    m_item->setSize(size());
    m_component->completeCreate();
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
