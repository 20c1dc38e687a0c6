#include "Core/Support/SearchKey.h"

namespace Tavrin {

QString searchKey(const QString& text)
{
    // Folding can take letters apart, so that composing comes last.
    return text.toCaseFolded().normalized(QString::NormalizationForm_C);
}

} // namespace Tavrin
