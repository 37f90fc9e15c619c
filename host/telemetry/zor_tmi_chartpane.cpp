#include "zor_tmi_chartpane.h"

#include "telemetry/zor_tmi_table.h"
#include "zor_tmi_archivemodel.h"
#include "zor_tmi_chartview.h"
#include "zor_tmi_columnstore.h"
#include "zor_tmi_texts.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QSplitter>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

// Item data: the table column and the field name searched beside the text.
constexpr int kColumnRole = Qt::UserRole;
constexpr int kNameRole = Qt::UserRole + 1;

} // namespace

ZOR_TmiChartPane::ZOR_TmiChartPane(QWidget* parent)
    : QWidget(parent)
    , m_lpSearch(new QLineEdit(this))
    , m_lpList(new QListWidget(this))
    , m_lpChart(new ZOR_TmiChartView(this))
    , m_lpReset(new QToolButton(this))
    , m_lpClear(new QToolButton(this))
{
    m_lpSearch->setClearButtonEnabled(true);
    m_lpList->setUniformItemSizes(true);
    auto* lpLeft = new QWidget(this);
    auto* lpLeftLayout = new QVBoxLayout(lpLeft);
    lpLeftLayout->setContentsMargins(0, 0, 0, 0);
    lpLeftLayout->addWidget(m_lpSearch);
    lpLeftLayout->addWidget(m_lpList);
    auto* lpButtons = new QHBoxLayout;
    lpButtons->addWidget(m_lpReset);
    lpButtons->addWidget(m_lpClear);
    lpButtons->addStretch();
    lpLeftLayout->addLayout(lpButtons);

    auto* lpSplitter = new QSplitter(Qt::Horizontal, this);
    lpSplitter->addWidget(lpLeft);
    lpSplitter->addWidget(m_lpChart);
    lpSplitter->setStretchFactor(1, 1);
    lpSplitter->setSizes({190, 600});
    auto* lpLayout = new QVBoxLayout(this);
    lpLayout->setContentsMargins(0, 0, 0, 0);
    lpLayout->addWidget(lpSplitter);

    connect(m_lpSearch, &QLineEdit::textChanged, this, &ZOR_TmiChartPane::slot_textChanged_Search);
    connect(m_lpList, &QListWidget::itemChanged, this, &ZOR_TmiChartPane::slot_itemChanged);
    connect(m_lpReset, &QToolButton::clicked, m_lpChart, &ZOR_TmiChartView::resetView);
    connect(m_lpClear, &QToolButton::clicked, this, [this] {
        for (int c : shownColumns())
            showColumn(c, false);
    });
    connect(m_lpChart, &ZOR_TmiChartView::signal_CursorChanged, this, &ZOR_TmiChartPane::signal_CursorChanged);
    retranslate();
}

void ZOR_TmiChartPane::setSource(ZOR_TmiArchiveModel* lpModel, ZOR_TmiColumnStore* lpStore)
{
    m_lpModel = lpModel;
    m_lpStore = lpStore;
    reload();
}

void ZOR_TmiChartPane::retranslate()
{
    m_lpSearch->setPlaceholderText(zorTmiText("chart_search"));
    m_lpReset->setText(zorTmiText("chart_reset"));
    m_lpReset->setToolTip(zorTmiText("chart_reset_tip"));
    m_lpClear->setText(zorTmiText("chart_clear"));
    m_lpChart->setToolTip(zorTmiText("chart_tip"));
}

void ZOR_TmiChartPane::reload()
{
    const QSignalBlocker block(m_lpList);
    m_lpList->clear();
    if (!m_lpModel || !m_lpStore)
        return;
    for (int c = 0; c < m_lpModel->columnCount(); ++c) {
        const QString qsName = QLatin1String(ZorTmi::field(m_lpModel->columnField(c)).name);
        const QString qsCaption = m_lpModel->headerData(c, Qt::Horizontal).toString();
        auto* lpItem = new QListWidgetItem(QStringLiteral("%1 (%2)").arg(qsCaption, qsName), m_lpList);
        lpItem->setData(kColumnRole, c);
        lpItem->setData(kNameRole, qsName);
        lpItem->setFlags(lpItem->flags() | Qt::ItemIsUserCheckable);
        lpItem->setCheckState(Qt::Unchecked);
    }
    slot_textChanged_Search(m_lpSearch->text());
    // The times are read with the first column chosen, not on opening.
    m_lpChart->setRecords(m_lpStore->recordCount(), QVector<double>());
    m_bAxisRead = false;
}

void ZOR_TmiChartPane::slot_textChanged_Search(const QString& qsText)
{
    const QString qsWanted = qsText.trimmed();
    for (int i = 0; i < m_lpList->count(); ++i) {
        QListWidgetItem* lpItem = m_lpList->item(i);
        lpItem->setHidden(!qsWanted.isEmpty() && !lpItem->text().contains(qsWanted, Qt::CaseInsensitive));
    }
}

bool ZOR_TmiChartPane::showColumn(int nColumn, bool bOn)
{
    if (nColumn < 0 || nColumn >= m_lpList->count())
        return false;
    QListWidgetItem* lpItem = m_lpList->item(nColumn);
    lpItem->setCheckState(bOn ? Qt::Checked : Qt::Unchecked); // itemChanged does the work
    return m_lpChart->hasSeries(nColumn) == bOn;
}

QList<int> ZOR_TmiChartPane::shownColumns() const
{
    QList<int> columns;
    for (int i = 0; i < m_lpList->count(); ++i)
        if (m_lpList->item(i)->checkState() == Qt::Checked)
            columns << i;
    return columns;
}

void ZOR_TmiChartPane::slot_itemChanged(QListWidgetItem* lpItem)
{
    const int nColumn = lpItem->data(kColumnRole).toInt();
    if (lpItem->checkState() != Qt::Checked) {
        m_lpChart->removeSeries(nColumn);
        return;
    }
    if (m_lpChart->hasSeries(nColumn))
        return;
    const int nId = m_lpModel->columnId(nColumn);
    const int nTime = m_lpStore->hasTime() ? m_lpStore->columnOf(3) : -1;
    m_lpStore->load({nId, nTime});
    if (!m_bAxisRead && m_lpStore->isLoaded(nId)) {
        m_lpChart->setRecords(m_lpStore->recordCount(), nTime >= 0 ? m_lpStore->values(nTime) : QVector<double>());
        m_bAxisRead = true;
    }
    const QVector<double>& values = m_lpStore->values(nId);
    if (values.size() != m_lpChart->recordCount()) {
        emit signal_Status(zorTmiText("chart_failed").arg(m_lpStore->errorString()));
        const QSignalBlocker block(m_lpList);
        lpItem->setCheckState(Qt::Unchecked);
        return;
    }
    m_lpChart->addSeries(
        nColumn, m_lpModel->headerData(nColumn, Qt::Horizontal).toString(), m_lpStore->unit(nId), values);
}
