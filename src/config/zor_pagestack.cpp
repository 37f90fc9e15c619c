#include "config/zor_pagestack.h"

#include "config/zor_form_config.h"

#include <QStackedWidget>

ZOR_PageStack::ZOR_PageStack(QObject* parent)
    : QObject(parent)
{
}

void ZOR_PageStack::attach(QStackedWidget* lpStack, ZOR_Form_Config* lpOwner)
{
    m_lpStack = lpStack;
    m_lpOwner = lpOwner;
}

void ZOR_PageStack::addPage(int nKind, ZOR_Form_Config* lpPage)
{
    m_kinds.append(nKind);
    m_pages.append(lpPage);
    m_lpStack->addWidget(lpPage ? static_cast<QWidget*>(lpPage) : new QWidget(m_lpStack));
    if (!lpPage)
        return;
    connect(
        lpPage, &ZOR_Form_Config::signal_UserParam_Add, this, [this, lpPage](QString p, QString m, QString s, int n) {
            if (isShown(lpPage))
                emit m_lpOwner->signal_UserParam_Add(p, m, s, n);
        });
    connect(lpPage, &ZOR_Form_Config::signal_UserParam_Del, this, [this, lpPage](QString p, QString m, QString s) {
        if (isShown(lpPage))
            emit m_lpOwner->signal_UserParam_Del(p, m, s);
    });
}

ZOR_Form_Config* ZOR_PageStack::page(int nKind) const
{
    const int i = m_kinds.indexOf(nKind);
    return i < 0 ? nullptr : m_pages[i];
}

bool ZOR_PageStack::show(int nKind)
{
    const int nIndex = m_kinds.indexOf(nKind);
    if (nKind == m_nShown || nIndex < 0)
        return false;
    if (ZOR_Form_Config* lpOld = shownPage())
        for (const ZOR_UserParamEntry& e : lpOld->publishedParams())
            emit m_lpOwner->signal_UserParam_Del(e.qsPrefix, e.qsMess, e.qsSuffix);
    m_nShown = nKind;
    if (ZOR_Form_Config* lpNew = shownPage())
        for (const ZOR_UserParamEntry& e : lpNew->publishedParams())
            emit m_lpOwner->signal_UserParam_Add(e.qsPrefix, e.qsMess, e.qsSuffix, e.nSize);
    for (int i = 0; i < m_lpStack->count(); ++i) {
        const QSizePolicy::Policy policy = i == nIndex ? QSizePolicy::Preferred : QSizePolicy::Ignored;
        m_lpStack->widget(i)->setSizePolicy(policy, policy);
    }
    m_lpStack->setCurrentIndex(nIndex);
    m_lpStack->adjustSize();
    return true;
}

bool ZOR_PageStack::isShown(const QObject* lpSender) const
{
    return lpSender && lpSender == shownPage();
}
