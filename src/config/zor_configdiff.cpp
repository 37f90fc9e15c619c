#include "config/zor_configdiff.h"

#include "store/cxmltagv2.h"

#include <QHash>

namespace {

QString quoted(const QString& s)
{
    return QLatin1Char('"') + s + QLatin1Char('"');
}

QString childPath(const QString& qsParent, const CXmlTagV2* lpTag, int nRank)
{
    QString qsPath = qsParent.isEmpty() ? lpTag->name() : qsParent + QLatin1Char('/') + lpTag->name();
    if (nRank > 1)
        qsPath += QStringLiteral("[%1]").arg(nRank);
    return qsPath;
}

// Each child's rank among the siblings of its name, from 1.
QVector<int> ranks(const CXmlTagV2* lpTag)
{
    QVector<int> result;
    result.reserve(lpTag->children().count());
    QHash<QString, int> seen;
    for (int i = 0; i < lpTag->children().count(); ++i)
        result.append(++seen[lpTag->getNumTag(i)->name()]);
    return result;
}

} // namespace

QString ZOR_ConfigDiff::Entry::text() const
{
    QString s = QString(QLatin1Char(sign)) + QLatin1Char(' ') + qsPath;
    if (qsAttr.isEmpty() && !qsWhole.isNull())
        return s + qsWhole;
    if (qsAttr.isEmpty())
        return s + QStringLiteral(" text: %1 -> %2").arg(quoted(qsOld), quoted(qsNew));
    if (sign == '~')
        return s + QStringLiteral(" @%1: %2 -> %3").arg(qsAttr, quoted(qsOld), quoted(qsNew));
    return s + QStringLiteral(" @%1=%2").arg(qsAttr, quoted(sign == '-' ? qsOld : qsNew));
}

void ZOR_ConfigDiff::compare(const CXmlTagV2* lpA, const CXmlTagV2* lpB)
{
    m_entries.clear();
    if (lpA && lpB && lpA->name() == lpB->name()) {
        node(lpA, lpB, lpA->name());
        return;
    }
    if (lpA)
        whole('-', lpA, lpA->name());
    if (lpB)
        whole('+', lpB, lpB->name());
}

void ZOR_ConfigDiff::node(const CXmlTagV2* lpA, const CXmlTagV2* lpB, const QString& qsPath)
{
    attributes(lpA, lpB, qsPath);
    if (lpA->value() != lpB->value())
        m_entries.append({'~', qsPath, QString(), lpA->value(), lpB->value(), QString()});
    const QVector<int> rankA = ranks(lpA);
    const QVector<int> rankB = ranks(lpB);
    // B's children by name and rank: one pass whatever the number of children.
    QHash<QString, QVector<int>> byName;
    for (int j = 0; j < lpB->children().count(); ++j)
        byName[lpB->getNumTag(j)->name()].append(j);
    QVector<bool> matched(lpB->children().count(), false);
    for (int i = 0; i < lpA->children().count(); ++i) {
        const CXmlTagV2* lpChild = lpA->getNumTag(i);
        const auto it = byName.constFind(lpChild->name());
        const QString qsChild = childPath(qsPath, lpChild, rankA[i]);
        if (it != byName.constEnd() && rankA[i] <= it->size()) {
            const int j = it->at(rankA[i] - 1);
            matched[j] = true;
            node(lpChild, lpB->getNumTag(j), qsChild);
        } else {
            whole('-', lpChild, qsChild);
        }
    }
    for (int j = 0; j < lpB->children().count(); ++j)
        if (!matched[j])
            whole('+', lpB->getNumTag(j), childPath(qsPath, lpB->getNumTag(j), rankB[j]));
}

void ZOR_ConfigDiff::attributes(const CXmlTagV2* lpA, const CXmlTagV2* lpB, const QString& qsPath)
{
    for (const CXmlAttribute& attr : lpA->attributes()) {
        const int i = lpB->attributeIndex(attr.name);
        if (i < 0)
            m_entries.append({'-', qsPath, attr.name, attr.value, QString(), QString()});
        else if (lpB->attributes().at(i).value != attr.value)
            m_entries.append({'~', qsPath, attr.name, attr.value, lpB->attributes().at(i).value, QString()});
    }
    for (const CXmlAttribute& attr : lpB->attributes())
        if (lpA->attributeIndex(attr.name) < 0)
            m_entries.append({'+', qsPath, attr.name, QString(), attr.value, QString()});
}

void ZOR_ConfigDiff::whole(char sign, const CXmlTagV2* lpTag, const QString& qsPath)
{
    QString qsText = QStringLiteral("");
    for (const CXmlAttribute& attr : lpTag->attributes())
        qsText += QLatin1Char(' ') + attr.name + QLatin1Char('=') + quoted(attr.value);
    if (!lpTag->value().isEmpty())
        qsText += QStringLiteral(" text=") + quoted(lpTag->value());
    m_entries.append({sign, qsPath, QString(), QString(), QString(), qsText});
    const QVector<int> rank = ranks(lpTag);
    for (int i = 0; i < lpTag->children().count(); ++i)
        whole(sign, lpTag->getNumTag(i), childPath(qsPath, lpTag->getNumTag(i), rank[i]));
}
