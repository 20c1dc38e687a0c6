#include "Platform/Linux/LinuxPlatform.h"
#ifdef TAVRIN_TESTS
#include "Platform/Fake/FakePlatform.h"
#endif

namespace Tavrin {

std::unique_ptr<Platform> Platform::create()
{
#ifdef TAVRIN_TESTS
    // A test build can run the real program on a system that exists in memory only.
    const QString folder = qEnvironmentVariable("TAVRIN_TEST_FAKE_PLATFORM");
    if (!folder.isEmpty())
        return std::make_unique<FakePlatform>(folder);
#endif
    return LinuxPlatform::connect();
}

} // namespace Tavrin
