#include "config/zor_captionlist.h"

#include "module/zor_language.h"

#include <QComboBox>
#include <QSignalBlocker>

ZOR_CaptionList& ZOR_CaptionList::add(const QString& qsCode, const QString& qsKey)
{
    m_items.append({qsCode, qsKey, QString(), {}});
    return *this;
}

ZOR_CaptionList& ZOR_CaptionList::addText(const QString& qsCode, const QString& qsText)
{
    m_items.append({qsCode, QString(), qsText, {}});
    return *this;
}

ZOR_CaptionList& ZOR_CaptionList::addComposed(const QString& qsCode, std::function<QString()> caption)
{
    m_items.append({qsCode, QString(), QString(), std::move(caption)});
    return *this;
}

ZOR_CaptionList ZOR_CaptionList::fromCount(int nCount, const QString& qsPattern, int nFirst)
{
    ZOR_CaptionList list;
    for (int i = nFirst; i < nFirst + nCount; ++i)
        list.addText(QString::number(i), qsPattern.arg(i));
    return list;
}

QString ZOR_CaptionList::code(int nIndex) const
{
    return nIndex >= 0 && nIndex < m_items.size() ? m_items[nIndex].qsCode : QString();
}

QString ZOR_CaptionList::caption(int nIndex) const
{
    if (nIndex < 0 || nIndex >= m_items.size())
        return QString();
    const Item& item = m_items[nIndex];
    if (item.composed)
        return item.composed();
    return item.qsKey.isEmpty() ? item.qsText : zorTr(item.qsKey);
}

QStringList ZOR_CaptionList::captions() const
{
    QStringList list;
    list.reserve(m_items.size());
    for (int i = 0; i < m_items.size(); ++i)
        list.append(caption(i));
    return list;
}

int ZOR_CaptionList::indexOfCode(const QString& qsCode) const
{
    for (int i = 0; i < m_items.size(); ++i)
        if (m_items[i].qsCode == qsCode)
            return i;
    return -1;
}

int ZOR_CaptionList::indexOfCaption(const QString& qsCaption) const
{
    for (int i = 0; i < m_items.size(); ++i)
        if (caption(i) == qsCaption)
            return i;
    return -1;
}

QString ZOR_CaptionList::captionOf(const QString& qsCode) const
{
    return caption(indexOfCode(qsCode));
}

QString ZOR_CaptionList::codeOf(const QString& qsCaption) const
{
    return code(indexOfCaption(qsCaption));
}

void ZOR_CaptionList::fill(QComboBox* lpBox) const
{
    if (!lpBox)
        return;
    // The shown caption may already be in the new language; remember the code
    // by position, which both languages share.
    const int nOld = lpBox->currentIndex();
    QString qsCode = code(indexOfCaption(lpBox->currentText()));
    if (qsCode.isNull() && nOld >= 0 && nOld < m_items.size() && lpBox->count() == m_items.size())
        qsCode = code(nOld);
    const QSignalBlocker block(lpBox);
    lpBox->clear();
    lpBox->addItems(captions());
    const int nIndex = indexOfCode(qsCode);
    lpBox->setCurrentIndex(nIndex >= 0 ? nIndex : (m_items.isEmpty() ? -1 : 0));
}

bool ZOR_CaptionList::select(QComboBox* lpBox, const QString& qsCode) const
{
    const int nIndex = indexOfCode(qsCode);
    if (!lpBox || nIndex < 0)
        return false;
    const int nBox = lpBox->findText(caption(nIndex), Qt::MatchExactly);
    if (nBox < 0)
        return false;
    lpBox->setCurrentIndex(nBox);
    return true;
}

void ZOR_CaptionList::selectOr(QComboBox* lpBox, const QString& qsCode, const QString& qsFallback) const
{
    if (!select(lpBox, qsCode))
        select(lpBox, qsFallback);
}

QString ZOR_CaptionList::currentCode(const QComboBox* lpBox) const
{
    return lpBox ? codeOf(lpBox->currentText()) : QString();
}
