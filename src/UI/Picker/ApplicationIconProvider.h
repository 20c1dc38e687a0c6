#pragma once

#include "Core/Applications/ApplicationCatalog.h"
#include "Core/Applications/InstalledApp.h"
#include "Core/Support/WorkerPool.h"

#include <QQuickAsyncImageProvider>
#include <memory>

namespace Tavrin {

/// Pictures of applications for images in the views, drawn on threads of their own when a view wants them.
/// The image says by its sourceSize how many pixels it wants.
class ApplicationIconProvider : public QQuickAsyncImageProvider {
public:
    explicit ApplicationIconProvider(std::shared_ptr<const ApplicationCatalog> catalog);

    /// Called on a thread of the views' own.
    QQuickImageResponse* requestImageResponse(const QString& id, const QSize& requestedSize) override;

private:
    /// More would take the processors away from the frames that the pictures are for.
    static constexpr int mostThreads = 2;

    std::shared_ptr<const ApplicationCatalog> m_catalog;
    WorkerPool m_workers{mostThreads};
};

/// The name under which the views' engine knows the provider.
inline constexpr const char* applicationIconProviderName = "applicationicon";

/// The address of the application's picture, for an image's source. An application without a picture has
/// one, too: a general one.
QString applicationIconSource(const InstalledApp& app);

} // namespace Tavrin
