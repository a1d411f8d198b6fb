#include "platform/text/TextColumns.h"

#include <unicode/uchar.h>

#include <algorithm>

namespace cardreel {

// The C library's wcwidth() depends on the locale, which may be a plain one.
int columnsOf(char32_t letter)
{
    const QChar::Category category = QChar::category(letter);
    if (category == QChar::Mark_NonSpacing || category == QChar::Mark_Enclosing)
        return 0;
    if (category >= QChar::Separator_Line && category <= QChar::Other_NotAssigned)
        return -1;
    const int width = u_getIntPropertyValue(static_cast<UChar32>(letter), UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

int columnsOf(const QString& text)
{
    int result = 0;
    for (const char32_t letter : text.toStdU32String())
        result += std::max(0, columnsOf(letter));
    return result;
}

} // namespace cardreel
