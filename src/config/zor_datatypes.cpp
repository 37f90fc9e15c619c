#include "config/zor_datatypes.h"

#include "module/zor_language.h"

namespace {

// Byte words: one form for 1 and 8, another for 2 and 4.
QString byteWord(QChar size)
{
    return zorTr(
        size == QLatin1Char('1') || size == QLatin1Char('8') ? QStringLiteral("wrd_016") : QStringLiteral("wrd_017"));
}

QString kindWord(QChar kind)
{
    switch (kind.toLatin1()) {
    case 'b': return zorTr(QStringLiteral("wrd_019"));
    case 'u': return zorTr(QStringLiteral("wrd_020"));
    case 's': return zorTr(QStringLiteral("wrd_021"));
    default: return zorTr(QStringLiteral("wrd_022"));
    }
}

} // namespace

const QStringList& ZOR_DataTypes::codes()
{
    static const QStringList list = {
        "1b", "1u", "1s", "2b", "2u", "2s", "4b", "4u", "4s", "4f", "8b", "8u", "8s", "8f"};
    return list;
}

const ZOR_CaptionList& ZOR_DataTypes::captionList()
{
    static const ZOR_CaptionList list = [] {
        ZOR_CaptionList l;
        for (const QString& code : codes()) {
            const QChar size = code.at(0);
            const QChar kind = code.at(1);
            l.addComposed(code,
                [size, kind] { return QStringLiteral("%1 %2, %3").arg(size).arg(byteWord(size), kindWord(kind)); });
        }
        return l;
    }();
    return list;
}

int ZOR_DataTypes::sizeOf(const QString& qsCode)
{
    return codes().contains(qsCode) ? qsCode.at(0).digitValue() : 0;
}

int ZOR_DataTypes::sizeOfCaption(const QString& qsCaption)
{
    return sizeOf(captionList().codeOf(qsCaption));
}
