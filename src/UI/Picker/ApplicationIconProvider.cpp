#include "UI/Picker/ApplicationIconProvider.h"

#include "Core/Support/Mailbox.h"

#include <QImage>
#include <QUrl>
#include <algorithm>
#include <atomic>

namespace Tavrin {
namespace {

/// Points, where an image does not say how large it wants its picture.
constexpr int usualSize = 32;
/// Pixels: 32 points on a screen of any scale, and no more.
constexpr int largestSize = 256;

/// One picture on its way. Lives on the views' thread, and ends with it or when the picture has come.
class IconResponse : public QQuickImageResponse {
public:
    IconResponse(WorkerPool& workers, std::shared_ptr<const ApplicationCatalog> catalog, const QString& name,
        int pixels)
    {
        workers.run([this, catalog = std::move(catalog), name, pixels, isWanted = m_isWanted,
                        address = m_mailbox.address()] {
            const QImage image = *isWanted ? catalog->icon(name, pixels) : QImage();
            // `this` is touched on its own thread only, and only while the mailbox lives.
            address.post([this, image] {
                m_image = image;
                Q_EMIT finished();
            });
        });
    }

    QQuickTextureFactory* textureFactory() const override
    {
        return QQuickTextureFactory::textureFactoryForImage(m_image);
    }
    void cancel() override { *m_isWanted = false; }

private:
    std::shared_ptr<std::atomic<bool>> m_isWanted = std::make_shared<std::atomic<bool>>(true);
    QImage m_image;
    Mailbox m_mailbox;
};

} // namespace

ApplicationIconProvider::ApplicationIconProvider(std::shared_ptr<const ApplicationCatalog> catalog)
    : m_catalog(std::move(catalog))
{
}

QQuickImageResponse* ApplicationIconProvider::requestImageResponse(
    const QString& id, const QSize& requestedSize)
{
    const int wanted = std::max(requestedSize.width(), requestedSize.height());
    return new IconResponse(m_workers, m_catalog, QUrl::fromPercentEncoding(id.toUtf8()),
        wanted > 0 ? std::min(wanted, largestSize) : usualSize);
}

QString applicationIconSource(const InstalledApp& app)
{
    // All of it encoded, since a name may be a path, with anything in it.
    return u"image://" + QLatin1String(applicationIconProviderName) + u'/'
        + QString::fromLatin1(QUrl::toPercentEncoding(app.icon));
}

} // namespace Tavrin
