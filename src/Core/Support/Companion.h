#pragma once

#include <QString>

namespace Tavrin {

/// Path of a file that comes with the program: beside the executable, as in the build tree, or else in the
/// program's own folder among the installed libraries. Needs the application object; says nothing of
/// whether the file is there.
QString companionFile(const QString& name);

} // namespace Tavrin
