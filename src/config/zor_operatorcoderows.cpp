#include "config/zor_operatorcoderows.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>

ZOR_OperatorCodeRows::ZOR_OperatorCodeRows(QObject* parent)
    : QObject(parent)
    , m_rows({{QStringLiteral("cfgsrv_015"), ZOR_RowBuilder::Label},
          {QStringLiteral("cfgsrv_014"), ZOR_RowBuilder::Integer, "oc", QStringLiteral("0"), 0, nMaxCode}})
{
}

void ZOR_OperatorCodeRows::build(QGridLayout* lpGrid)
{
    m_rows.build(
        lpGrid, nRowCount, [](int n) { return QString::number(n); }, 1,
        [this](int, QVector<QWidget*>& widgets) {
            auto spin = static_cast<QSpinBox*>(widgets[1]);
            spin->setButtonSymbols(QAbstractSpinBox::NoButtons);
            // An empty row reads better than a column of zeros.
            spin->setSpecialValueText(QStringLiteral(" "));
            spin->setMinimumWidth(90);
            spin->installEventFilter(this);
            // A row whose text the user deleted is an empty row at
            // once; the spin box alone would go back to the old code.
            if (auto edit = spin->findChild<QLineEdit*>())
                connect(edit, &QLineEdit::textEdited, spin, [spin](const QString& qsText) {
                    if (qsText.trimmed().isEmpty())
                        spin->setValue(0);
                });
        });
    // Keeps the number beside its code however wide the dialog is.
    if (lpGrid)
        lpGrid->setColumnStretch(2, 1);
    setCurrentRow(0);
}

QSpinBox* ZOR_OperatorCodeRows::codeBox(int nIndex) const
{
    return m_rows.widgetAs<QSpinBox>(nIndex, 1);
}

QVector<int> ZOR_OperatorCodeRows::codes() const
{
    QVector<int> result;
    for (int r = 0; r < m_rows.rowCount(); ++r)
        result.append(codeBox(r)->value());
    return result;
}

void ZOR_OperatorCodeRows::setCodes(const QVector<int>& codes)
{
    for (int r = 0; r < m_rows.rowCount(); ++r)
        codeBox(r)->setValue(r < codes.size() ? codes[r] : 0);
}

void ZOR_OperatorCodeRows::setCurrentRow(int nIndex)
{
    if (nIndex < 0 || nIndex >= m_rows.rowCount())
        return;
    m_nCurrent = nIndex;
    for (int r = 0; r < m_rows.rowCount(); ++r) {
        auto label = m_rows.widgetAs<QLabel>(r, 0);
        QFont font = label->font();
        font.setBold(r == m_nCurrent);
        label->setFont(font);
    }
}

bool ZOR_OperatorCodeRows::moveCurrentRow(int nStep)
{
    const int nTarget = m_nCurrent + nStep;
    if (nStep == 0 || nTarget < 0 || nTarget >= m_rows.rowCount())
        return false;
    QSpinBox* from = codeBox(m_nCurrent);
    QSpinBox* to = codeBox(nTarget);
    const int nCode = from->value();
    from->setValue(to->value());
    to->setValue(nCode);
    setCurrentRow(nTarget);
    if (from->hasFocus())
        to->setFocus();
    return true;
}

bool ZOR_OperatorCodeRows::eventFilter(QObject* lpWatched, QEvent* lpEvent)
{
    if (lpEvent->type() == QEvent::FocusIn) {
        for (int r = 0; r < m_rows.rowCount(); ++r)
            if (codeBox(r) == lpWatched)
                setCurrentRow(r);
    }
    return QObject::eventFilter(lpWatched, lpEvent);
}
