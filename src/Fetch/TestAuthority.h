#pragma once

namespace Tavrin {

/// In a build for tests: connections also trust the certificates in the file that
/// TAVRIN_TEST_AUTHORITY names. Needs the application object.
void trustTestAuthority();

} // namespace Tavrin
