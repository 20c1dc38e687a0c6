// time_store FOLDER COUNT REPEATS: one line a round: nanoseconds to load and to save COUNT shortcuts.
#include "Clock.h"

#include "Core/Model/KeyCodeHelper.h"
#include "Core/Model/ShortcutJson.h"
#include "Core/Storage/AtomicFile.h"
#include "Core/Storage/ConfigStore.h"

#include <QDir>

#include <cstdio>

using namespace Tavrin;
using namespace Tavrin::Bench;

namespace {

std::vector<ShortcutItem> shortcuts(std::uint32_t count)
{
    constexpr std::uint32_t keys = 128;
    std::vector<ShortcutItem> items;
    for (std::uint32_t index = 0; index < count; ++index) {
        const QString number = QString::number(index);
        items.push_back({QUuid::createUuid(), u"Sao lưu thư mục " + number, index % keys, cmdKey | optionKey,
            ActionType::shellScript, u"rsync -a --delete \"$HOME/Tài liệu/" + number + u"\" /mnt/backup/",
            /*isEnabled=*/true, ShortcutItem::currentDate()});
    }
    return items;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4)
        return EXIT_FAILURE;
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const auto count = static_cast<std::uint32_t>(std::atoi(argv[2]));
    QDir().mkpath(folder + u"/Tavrin");
    if (AtomicFile::write(folder + u"/Tavrin/shortcuts.json", encodeShortcuts(shortcuts(count))))
        return EXIT_FAILURE;
    ConfigStore store(folder);
    if (store.shortcuts().size() != count)
        return EXIT_FAILURE;
    for (int turn = 0; turn < std::atoi(argv[3]); ++turn) {
        const Nanoseconds start = now();
        store.load();
        const Nanoseconds loaded = now();
        store.save();
        std::printf("%lld %lld\n", loaded - start, now() - loaded);
    }
    return EXIT_SUCCESS;
}
