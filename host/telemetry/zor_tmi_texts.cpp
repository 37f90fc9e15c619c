#include "zor_tmi_texts.h"

#include "module/zor_language.h"

QString zorTmiText(const char* lpKey)
{
    return zorTr(QStringLiteral("tmiwin_") + QLatin1String(lpKey));
}
