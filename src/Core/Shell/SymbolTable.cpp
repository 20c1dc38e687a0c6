#include "Core/Shell/SymbolTable.h"

#include <algorithm>

namespace Tavrin {

QString symbolPicture(QStringView name)
{
    const auto* const found = std::ranges::find_if(
        symbolTable, [name](const SymbolPicture& entry) { return name == QLatin1StringView(entry.name); });
    return found == symbolTable.end() ? QString() : QString::fromLatin1(found->picture);
}

} // namespace Tavrin
