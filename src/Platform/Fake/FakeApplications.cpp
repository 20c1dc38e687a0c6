#include "Platform/Fake/FakeApplications.h"

#include <QColor>
#include <QImage>

namespace Tavrin {
namespace {

/// Holds the completion for as long as the panel is wanted.
class FakeOpenPanelRequest : public OpenPanelRequest {
public:
    explicit FakeOpenPanelRequest(std::shared_ptr<OpenPanel::Completion> completion)
        : m_completion(std::move(completion))
    {
    }

private:
    std::shared_ptr<OpenPanel::Completion> m_completion;
};

} // namespace

QStringList FakeApplicationCatalog::contents(const QString& folder) const
{
    if (listing)
        listing(folder);
    const auto found = entries.find(folder);
    return found == entries.end() ? QStringList() : found->second;
}

ApplicationInformation FakeApplicationCatalog::information(const QString& path) const
{
    const auto found = known.find(path);
    return found == known.end() ? ApplicationInformation() : found->second;
}

QImage FakeApplicationCatalog::icon(const QString& name, int pixels) const
{
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    const QColor color(name);
    image.fill(color.isValid() ? color : QColor(Qt::gray));
    return image;
}

void FakeApplicationCatalog::add(
    const QString& folder, const QString& entry, const ApplicationInformation& information)
{
    if (!folderPaths.contains(folder))
        folderPaths.append(folder);
    entries[folder].append(entry);
    known[folder + u'/' + entry] = information;
}

std::unique_ptr<OpenPanelRequest> FakeOpenPanel::chooseApplication(
    std::uintptr_t /*window*/, Completion completion)
{
    ++requests;
    auto open = std::make_shared<Completion>(std::move(completion));
    m_open = open;
    return std::make_unique<FakeOpenPanelRequest>(std::move(open));
}

bool FakeOpenPanel::answer(const std::optional<QString>& path)
{
    const auto completion = std::exchange(m_open, {}).lock();
    if (completion)
        (*completion)(path);
    return completion != nullptr;
}

} // namespace Tavrin
