#include "config/zor_configsheet.h"

#include "config/zor_configdocument.h"
#include "module/zor_language.h"
#include "store/cserialize.h"
#include "store/cxmltagv2.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QFile>
#include <QFileInfo>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QPrinter>
#include <QSaveFile>
#include <QSpinBox>
#include <QTextDocument>

namespace {

// Every attribute of a tree by "NODE/PATH/attr".
QHash<QString, QString> valuesOf(const QByteArray& bytes)
{
    QHash<QString, QString> values;
    CSerialize doc;
    if (!doc.openData(bytes) || !doc.root())
        return values;
    QVector<QPair<const CXmlTagV2*, QString>> stack{{doc.root(), doc.root()->name()}};
    while (!stack.isEmpty()) {
        const auto top = stack.takeLast();
        for (const CXmlAttribute& attr : top.first->attributes())
            values.insert(top.second + QLatin1Char('/') + attr.name, attr.value);
        for (int i = 0; i < top.first->children().count(); ++i)
            stack.append({top.first->getNumTag(i), top.second + QLatin1Char('/') + top.first->getNumTag(i)->name()});
    }
    return values;
}

QString plain(QString s)
{
    s.remove(QLatin1Char('&'));
    if (s.endsWith(QLatin1Char(':')))
        s.chop(1);
    return s.trimmed();
}

// The grid, at any depth of lpLayout, that holds the widget.
QGridLayout* gridOf(QLayout* lpLayout, QWidget* lpWidget)
{
    if (!lpLayout)
        return nullptr;
    auto* lpGrid = qobject_cast<QGridLayout*>(lpLayout);
    if (lpGrid && lpGrid->indexOf(lpWidget) >= 0)
        return lpGrid;
    for (int i = 0; i < lpLayout->count(); ++i)
        if (QGridLayout* lpFound = gridOf(lpLayout->itemAt(i)->layout(), lpWidget))
            return lpFound;
    return nullptr;
}

// The label in the cell to the left of the widget in a grid, if any.
QString gridLabel(const QWidget* lpWidget)
{
    const QWidget* lpParent = lpWidget->parentWidget();
    QGridLayout* lpGrid = lpParent ? gridOf(lpParent->layout(), const_cast<QWidget*>(lpWidget)) : nullptr;
    const int i = lpGrid ? lpGrid->indexOf(const_cast<QWidget*>(lpWidget)) : -1;
    if (i < 0)
        return QString();
    int nRow = 0, nCol = 0, nRowSpan = 0, nColSpan = 0;
    lpGrid->getItemPosition(i, &nRow, &nCol, &nRowSpan, &nColSpan);
    // A row of a table: the column's header above and the row's caption at
    // its start ("Код оператора 3").
    QLayoutItem* lpHead = nRow > 0 ? lpGrid->itemAtPosition(0, nCol) : nullptr;
    auto* lpHeadLabel = lpHead ? qobject_cast<QLabel*>(lpHead->widget()) : nullptr;
    const QString qsHead = lpHeadLabel ? plain(lpHeadLabel->text()) : QString();
    for (int c = nCol - 1; c >= 0; --c) {
        QLayoutItem* lpItem = lpGrid->itemAtPosition(nRow, c);
        auto* lpLabel = lpItem ? qobject_cast<QLabel*>(lpItem->widget()) : nullptr;
        if (!lpLabel || lpLabel->text().isEmpty())
            continue;
        if (c == 0 && !qsHead.isEmpty())
            return qsHead + QLatin1Char(' ') + lpLabel->text();
        return lpLabel->text();
    }
    return qsHead;
}

QString groupTitle(const QWidget* lpWidget)
{
    for (const QWidget* w = lpWidget->parentWidget(); w; w = w->parentWidget())
        if (auto* lpBox = qobject_cast<const QGroupBox*>(w))
            if (!lpBox->title().isEmpty())
                return lpBox->title();
    return QString();
}

} // namespace

QString ZOR_ConfigSheet::captionOf(const QWidget* lpWidget)
{
    if (!lpWidget)
        return QString();
    if (auto* lpButton = qobject_cast<const QAbstractButton*>(lpWidget))
        if (!lpButton->text().isEmpty())
            return plain(lpButton->text());
    if (const QWidget* lpParent = lpWidget->parentWidget()) {
        for (const QLabel* lpLabel : lpParent->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly))
            if (lpLabel->buddy() == lpWidget && !lpLabel->text().isEmpty())
                return plain(lpLabel->text());
        if (auto* lpForm = qobject_cast<QFormLayout*>(lpParent->layout()))
            if (auto* lpLabel = qobject_cast<QLabel*>(lpForm->labelForField(const_cast<QWidget*>(lpWidget))))
                return plain(lpLabel->text());
    }
    const QString qsGrid = gridLabel(lpWidget);
    return plain(qsGrid.isEmpty() ? groupTitle(lpWidget) : qsGrid);
}

QString ZOR_ConfigSheet::shownValue(const QWidget* lpWidget)
{
    if (auto* lpBox = qobject_cast<const QComboBox*>(lpWidget))
        return lpBox->currentText();
    if (auto* lpSpin = qobject_cast<const QSpinBox*>(lpWidget))
        return (lpSpin->prefix() + QString::number(lpSpin->value()) + lpSpin->suffix()).trimmed();
    if (auto* lpButton = qobject_cast<const QAbstractButton*>(lpWidget))
        return zorTr(lpButton->isChecked() ? QStringLiteral("cfgwin_124") : QStringLiteral("cfgwin_125"));
    if (auto* lpEdit = qobject_cast<const QLineEdit*>(lpWidget))
        return lpEdit->text();
    if (auto* lpLabel = qobject_cast<const QLabel*>(lpWidget))
        return lpLabel->text();
    return QString();
}

void ZOR_ConfigSheet::build(ZOR_ConfigDocument* lpDoc)
{
    m_rows.clear();
    const QString qsFile = lpDoc->fileName();
    m_qsTitle = zorTr(QStringLiteral("cfgwin_121"))
        + (qsFile.isEmpty() ? QString() : QStringLiteral(" — ") + QFileInfo(qsFile).fileName());
    const QHash<QString, QString> defaults = valuesOf(lpDoc->renderDefaults());
    const QHash<QString, QString> current = valuesOf(lpDoc->render());
    QVector<QVector<Row>> byPage(lpDoc->pages().size());
    for (const ZOR_ConfigProblems::Read& read : lpDoc->settingWidgets()) {
        const int nPage = lpDoc->pageOf(read.lpWidget);
        if (nPage < 0)
            continue;
        const QString qsKey = read.qsNode + QLatin1Char('/') + read.qsAttr;
        Row row;
        row.qsPage = zorTr(QLatin1String(lpDoc->pages().at(nPage).lpCaptionKey));
        row.qsCaption = captionOf(read.lpWidget);
        if (row.qsCaption.isEmpty())
            row.qsCaption = read.qsNode.section(QLatin1Char('/'), -1) + QLatin1Char('/') + read.qsAttr;
        row.qsValue = shownValue(read.lpWidget);
        row.bChanged = defaults.value(qsKey) != current.value(qsKey);
        row.qsNode = read.qsNode;
        row.qsAttr = read.qsAttr;
        byPage[nPage].append(row);
    }
    for (const QVector<Row>& page : qAsConst(byPage))
        m_rows += page;
}

QString ZOR_ConfigSheet::toText() const
{
    QString s = m_qsTitle + QLatin1Char('\n');
    QString qsPage;
    for (const Row& row : m_rows) {
        if (row.qsPage != qsPage) {
            qsPage = row.qsPage;
            s += QLatin1Char('\n') + qsPage + QLatin1Char('\n');
        }
        s += QStringLiteral("  %1 %2: %3\n")
                 .arg(row.bChanged ? QStringLiteral("*") : QStringLiteral(" "), row.qsCaption, row.qsValue);
    }
    return s + QLatin1Char('\n') + zorTr(QStringLiteral("cfgwin_123")) + QLatin1Char('\n');
}

QString ZOR_ConfigSheet::toHtml() const
{
    const QStringList head = zorTr(QStringLiteral("cfgwin_122")).split(QLatin1Char('|'));
    QString s = QStringLiteral("<html><head><meta charset=\"utf-8\"><title>%1</title></head><body>"
                               "<h2>%1</h2><table border=\"1\" cellspacing=\"0\" cellpadding=\"3\">")
                    .arg(m_qsTitle.toHtmlEscaped());
    s += QStringLiteral("<tr><th>%1</th><th>%2</th><th>%3</th></tr>").arg(head.value(0), head.value(1), head.value(2));
    for (const Row& row : m_rows) {
        const QString qsValue = row.qsValue.toHtmlEscaped();
        s += QStringLiteral("<tr><td>%1</td><td>%2</td><td>%3</td></tr>")
                 .arg(row.qsPage.toHtmlEscaped(), row.qsCaption.toHtmlEscaped(),
                     row.bChanged ? QStringLiteral("<b>%1 *</b>").arg(qsValue) : qsValue);
    }
    const QString qsNote = zorTr(QStringLiteral("cfgwin_123")).toHtmlEscaped();
    return s + QStringLiteral("</table><p>%1</p></body></html>").arg(qsNote);
}

void ZOR_ConfigSheet::print(QPrinter* lpPrinter) const
{
    QTextDocument doc;
    doc.setHtml(toHtml());
    doc.print(lpPrinter);
}

bool ZOR_ConfigSheet::save(const QString& qsFileName, Format format)
{
    if (format == Pdf) {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(qsFileName);
        print(&printer);
        if (!QFileInfo(qsFileName).isFile()) {
            m_qsError = QStringLiteral("%1: cannot be written").arg(qsFileName);
            return false;
        }
        return true;
    }
    QSaveFile file(qsFileName);
    const QByteArray bytes = (format == Html ? toHtml() : toText()).toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        m_qsError = QStringLiteral("%1: %2").arg(qsFileName, file.errorString());
        return false;
    }
    return true;
}
