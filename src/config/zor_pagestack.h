#ifndef ZOR_PAGESTACK_H
#define ZOR_PAGESTACK_H

// The page area of a form that shows one page of several, chosen by a kind
// code: the serial port's device page, the Bluetooth slot's sensor page.
// Every page is built once and kept while another is shown, so switching
// back keeps what was entered.
//
// The shown page alone counts: for the size of the area (or every port
// would be as large as its largest page), and for the user parameters the
// owning form passes on. Showing another kind withdraws the values the
// previous page publishes (publishedParams) as the owner's
// signal_UserParam_Del and offers the new page's as signal_UserParam_Add;
// signals of the pages reach the owner only from the shown one (isShown).

#include <QObject>
#include <QVector>

class QStackedWidget;
class ZOR_Form_Config;

class ZOR_PageStack : public QObject
{
    Q_OBJECT
public:
    explicit ZOR_PageStack(QObject* parent = nullptr);

    // The area and the form whose user-parameter signals carry the pages'.
    void attach(QStackedWidget* lpStack, ZOR_Form_Config* lpOwner);
    // The page of a kind (null: the kind shows an empty page). Its
    // signal_UserParam_Add / _Del reach the owner while it is shown.
    void addPage(int nKind, ZOR_Form_Config* lpPage);

    ZOR_Form_Config* page(int nKind) const;
    int shownKind() const { return m_nShown; }
    ZOR_Form_Config* shownPage() const { return page(m_nShown); }
    // False when nKind is shown already (nothing changes) or has no place.
    bool show(int nKind);
    // Whether a signal's sender is the shown page.
    bool isShown(const QObject* lpSender) const;

private:
    QStackedWidget* m_lpStack = nullptr;
    ZOR_Form_Config* m_lpOwner = nullptr;
    QVector<int> m_kinds; // by stack index
    QVector<ZOR_Form_Config*> m_pages; // by stack index, null: empty page
    int m_nShown = -1;
};

#endif
