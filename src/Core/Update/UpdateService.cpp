#include "Core/Update/UpdateService.h"

#include "MakerData.h"

namespace Tavrin {

UpdateService::UpdateService() = default;
UpdateService::~UpdateService() = default;

QString UpdateService::currentVersion() const
{
    return QString::fromUtf8(MakerData::version);
}

void UpdateService::checkForUpdates(bool /*manual*/)
{
}

} // namespace Tavrin
