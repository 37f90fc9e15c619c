#include "config/zor_configproblems.h"

#include "store/cxmltagv2.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QRegularExpression>
#include <QSpinBox>

#include <algorithm>

namespace {

ZOR_ConfigProblems* g_lpActive = nullptr;

QString quoted(const QString& s)
{
    return QLatin1Char('"') + s + QLatin1Char('"');
}

bool isWholeNumber(const QString& s)
{
    static const QRegularExpression rx(QStringLiteral("^[-+]?[0-9]+$"));
    return rx.match(s).hasMatch();
}

bool isHex(const QString& s, int nMaxDigits)
{
    static const QRegularExpression rx(QStringLiteral("^[0-9a-fA-F]+$"));
    return rx.match(s).hasMatch() && (nMaxDigits <= 0 || s.size() <= nMaxDigits);
}

// The codes of a list, for a reason: the first few, then "...".
QString codesOf(const ZOR_CaptionList* lpList)
{
    if (!lpList)
        return QString();
    QStringList codes;
    const int nShown = 12;
    for (int i = 0; i < lpList->count() && i < nShown; ++i)
        codes.append(lpList->code(i));
    if (lpList->count() > nShown)
        codes.append(QStringLiteral("..."));
    return codes.join(QStringLiteral(", "));
}

QString integerReason(const ZOR_FormBinding::Row& row, const QString& qsValue)
{
    const auto* lpSpin = static_cast<const QSpinBox*>(row.lpWidget);
    if (!isWholeNumber(qsValue))
        return QStringLiteral("not a whole number");
    return QStringLiteral("out of range %1..%2").arg(lpSpin->minimum()).arg(lpSpin->maximum());
}

} // namespace

QString ZOR_ConfigProblems::Problem::text(const QString& qsFile) const
{
    QString s = QStringLiteral("%1:%2: %3").arg(qsFile).arg(nLine).arg(qsNode);
    if (!qsAttr.isEmpty())
        s += QLatin1Char('/') + qsAttr + QStringLiteral(": ") + quoted(qsValue) + QStringLiteral(" -> ")
            + quoted(qsKept);
    return s + QStringLiteral(": ") + qsReason;
}

ZOR_ConfigProblems::Recording::Recording(ZOR_ConfigProblems* lpProblems)
    : m_lpPrevious(g_lpActive)
{
    g_lpActive = lpProblems;
}

ZOR_ConfigProblems::Recording::~Recording()
{
    g_lpActive = m_lpPrevious;
}

ZOR_ConfigProblems* ZOR_ConfigProblems::active()
{
    return g_lpActive;
}

void ZOR_ConfigProblems::clear()
{
    m_read.clear();
    m_notes.clear();
    m_own.clear();
    m_list.clear();
    m_reads.clear();
}

QString ZOR_ConfigProblems::pathOf(const CXmlTagV2* lpTag)
{
    QString qsPath;
    for (const CXmlTagV2* t = lpTag; t; t = t->parent())
        qsPath = qsPath.isEmpty() ? t->name() : t->name() + QLatin1Char('/') + qsPath;
    return qsPath;
}

QString ZOR_ConfigProblems::reason(const ZOR_FormBinding::Row& row, const QString& qsValue)
{
    switch (row.kind) {
    case ZOR_FormBinding::Check: return QStringLiteral("not 0 or 1");
    case ZOR_FormBinding::Integer: return integerReason(row, qsValue);
    case ZOR_FormBinding::Caption:
        if (row.lpList && row.lpList->indexOfCode(qsValue) < 0)
            return QStringLiteral("unknown code (known: %1)").arg(codesOf(row.lpList));
        return QStringLiteral("not offered here");
    case ZOR_FormBinding::Index: {
        const int nCount = static_cast<const QComboBox*>(row.lpWidget)->count();
        if (!isWholeNumber(qsValue))
            return QStringLiteral("not a whole number");
        return QStringLiteral("unknown code (known: 0..%1)").arg(nCount - 1);
    }
    case ZOR_FormBinding::Hex:
        if (!isHex(qsValue.trimmed(), 8))
            return QStringLiteral("not hexadecimal");
        return QStringLiteral("written as %1-digit lower-case hexadecimal").arg(row.nDigits);
    case ZOR_FormBinding::HexUpper:
        return isHex(qsValue.trimmed(), 0) ? QStringLiteral("not %1 hexadecimal digits").arg(row.nDigits)
                                           : QStringLiteral("not hexadecimal");
    case ZOR_FormBinding::Text: {
        const auto* lpEdit = static_cast<const QLineEdit*>(row.lpWidget);
        if (qsValue.size() > lpEdit->maxLength())
            return QStringLiteral("longer than %1 characters").arg(lpEdit->maxLength());
        return QStringLiteral("not accepted by the field");
    }
    case ZOR_FormBinding::Custom:
        if (!isWholeNumber(qsValue) && isWholeNumber(ZOR_FormBinding::storedValue(row)))
            return QStringLiteral("not a whole number");
        break;
    }
    return QStringLiteral("not kept as written");
}

void ZOR_ConfigProblems::noteRow(
    const CXmlTagV2* lpTag, const QByteArray& attr, const ZOR_FormBinding::Row& row, const QString& qsValue)
{
    const Key key(lpTag, QString::fromLatin1(attr));
    m_read.insert(key, row.lpWidget);
    m_reads.append(Read{pathOf(lpTag), key.second, row.lpWidget});
    if (qsValue.isEmpty())
        return;
    const QString qsKept = ZOR_FormBinding::storedValue(row);
    if (qsKept != qsValue)
        m_notes.insert(key, Note{qsValue, qsKept, reason(row, qsValue), row.lpWidget});
}

void ZOR_ConfigProblems::noteRead(const CXmlTagV2* lpTag, const QString& qsAttr, QWidget* lpWidget)
{
    m_read.insert(Key(lpTag, qsAttr), lpWidget);
    m_reads.append(Read{pathOf(lpTag), qsAttr, lpWidget});
}

void ZOR_ConfigProblems::note(const CXmlTagV2* lpTag, const QString& qsAttr, const QString& qsValue,
    const QString& qsKept, const QString& qsReason, QWidget* lpWidget)
{
    const Key key(lpTag, qsAttr);
    if (!qsAttr.isEmpty() && !m_notes.contains(key) && qsKept == qsValue)
        m_own.append(key);
    m_notes.insert(key, Note{qsValue, qsKept, qsReason, lpWidget});
    if (lpWidget)
        m_read.insert(key, lpWidget);
}

void ZOR_ConfigProblems::add(const CXmlTagV2* lpTag, const QString& qsPath, const QString& qsAttr,
    const QString& qsValue, const QString& qsKept, const QString& qsReason)
{
    Problem p;
    p.nLine = lpTag ? lpTag->line() : 0;
    p.qsNode = qsPath;
    p.qsAttr = qsAttr;
    p.qsValue = qsValue;
    p.qsKept = qsKept;
    p.qsReason = qsReason;
    p.lpWidget = m_read.value(Key(lpTag, qsAttr));
    m_list.append(p);
}

void ZOR_ConfigProblems::compare(const CXmlTagV2* lpFile, const CXmlTagV2* lpWritten, const QString& qsRootName)
{
    m_list.clear();
    if (!lpFile) {
        Problem p;
        p.nLine = 1;
        p.qsNode = qsRootName;
        p.qsReason = QStringLiteral("not a configuration: the file holds no element");
        m_list.append(p);
        return;
    }
    if (lpFile->name() != qsRootName) {
        add(lpFile, lpFile->name(), QString(), QString(), QString(),
            QStringLiteral("not a configuration: the top element is not %1").arg(qsRootName));
        return;
    }
    compareNode(lpFile, lpWritten, lpFile->name());
    // Findings about values the forms keep as they are (a record too long
    // for the terminal) have no difference to show: they come last and are
    // sorted into place below.
    for (const Key& key : qAsConst(m_own)) {
        const Note note = m_notes.value(key);
        add(key.first, pathOf(key.first), key.second, note.qsValue, note.qsKept, note.qsReason);
    }
    const auto byLine = [](const Problem& a, const Problem& b) { return a.nLine < b.nLine; };
    if (!std::is_sorted(m_list.begin(), m_list.end(), byLine))
        std::stable_sort(m_list.begin(), m_list.end(), byLine);
}

void ZOR_ConfigProblems::compareAttributes(const CXmlTagV2* lpFile, const CXmlTagV2* lpWritten, const QString& qsPath)
{
    for (const CXmlAttribute& attr : lpFile->attributes()) {
        const int i = lpWritten->attributeIndex(attr.name);
        const Key key(lpFile, attr.name);
        if (i < 0) {
            add(lpFile, qsPath, attr.name, attr.value, QString(),
                m_read.contains(key) ? QStringLiteral("read, but dropped on save")
                                     : QStringLiteral("no form reads this attribute"));
            continue;
        }
        const QString& qsKept = lpWritten->attributes().at(i).value;
        if (qsKept == attr.value)
            continue;
        auto note = m_notes.constFind(key);
        QString qsReason;
        if (note != m_notes.constEnd() && note->qsKept == qsKept)
            qsReason = note->qsReason;
        else if (attr.value.isEmpty())
            qsReason = QStringLiteral("empty: the default is kept");
        else
            qsReason = QStringLiteral("not kept as written");
        add(lpFile, qsPath, attr.name, attr.value, qsKept, qsReason);
    }
}

void ZOR_ConfigProblems::compareNode(const CXmlTagV2* lpFile, const CXmlTagV2* lpWritten, const QString& qsPath)
{
    compareAttributes(lpFile, lpWritten, qsPath);
    if (!lpFile->value().trimmed().isEmpty() && lpFile->value() != lpWritten->value())
        add(lpFile, qsPath, QString(), QString(), QString(), QStringLiteral("its text is not kept"));
    // Children are matched by name and by their rank among the siblings of
    // that name, as `zor-tool config diff` matches them: one pass over each
    // side, whatever the number of children.
    QHash<QString, QVector<const CXmlTagV2*>> written;
    for (int i = 0; i < lpWritten->children().count(); ++i)
        written[lpWritten->getNumTag(i)->name()].append(lpWritten->getNumTag(i));
    QHash<QString, int> seen;
    for (int i = 0; i < lpFile->children().count(); ++i) {
        const CXmlTagV2* lpChild = lpFile->getNumTag(i);
        const int nRank = ++seen[lpChild->name()];
        QString qsChild = qsPath + QLatin1Char('/') + lpChild->name();
        if (nRank > 1)
            qsChild += QStringLiteral("[%1]").arg(nRank);
        const auto it = written.constFind(lpChild->name());
        if (it != written.constEnd() && nRank <= it->size())
            compareNode(lpChild, it->at(nRank - 1), qsChild);
        else
            add(lpChild, qsChild, QString(), QString(), QString(),
                m_notes.value(Key(lpChild, QString())).qsReason.isEmpty()
                    ? QStringLiteral("no form reads this node")
                    : m_notes.value(Key(lpChild, QString())).qsReason);
    }
}
