#include "config/zor_form_config_ble_devtype.h"

#include "module/zor_global.h"
#include "module/zor_language.h"
#include "store/zor_settingsnode.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QSpinBox>
#include <QStandardItemModel>

namespace {

// The fuel sensor threshold has no range of its own in the terminal's
// settings; a 16-bit value holds every level a sensor reports.
constexpr int kThresholdMax = 65535;
constexpr int kChannelIndexCount = 4;

QString channelAttr(const char* lpWord, int nChannel, int nChannels)
{
    return nChannels > 1 ? QStringLiteral("%1%2").arg(QLatin1String(lpWord)).arg(nChannel)
                         : QString::fromLatin1(lpWord);
}

} // namespace

ZOR_Form_Config_Ble_DevType::ZOR_Form_Config_Ble_DevType(QWidget* parent)
    : ZOR_Form_Config(parent)
{
}

ZOR_CaptionList ZOR_Form_Config_Ble_DevType::indexCaptions(const QString& qsKey, int nCount, bool bAligned)
{
    ZOR_CaptionList list;
    for (int n = 1; n <= nCount; ++n)
        list.addComposed(QString::number(n),
            [qsKey, n, bAligned] { return QStringLiteral("%1 %2").arg(zorTr(qsKey)).arg(n, bAligned ? 2 : 1); });
    return list;
}

void ZOR_Form_Config_Ble_DevType::markTaken(QComboBox* lpBox, const ZOR_CaptionList& list, const QSet<int>& taken)
{
    auto model = lpBox ? qobject_cast<QStandardItemModel*>(lpBox->model()) : nullptr;
    if (!model)
        return;
    // Loading marks every slot's lists again; touching an item that already
    // has its state would notify the view for nothing.
    const int nCurrent = lpBox->currentIndex();
    for (int i = 0; i < lpBox->count() && i < list.count(); ++i) {
        QStandardItem* item = model->item(i);
        const bool bEnabled = i == nCurrent || !taken.contains(list.code(i).toInt());
        if (item && item->isEnabled() != bEnabled)
            item->setEnabled(bEnabled);
    }
}

void ZOR_Form_Config_Ble_DevType::buildPage(const Layout& layout)
{
    m_layout = layout;
    for (int i = 0; i < layout.models.size(); ++i)
        m_models.addText(QString::number(i), layout.models[i]);
    auto form = new QFormLayout(this);
    form->setContentsMargins(4, 4, 4, 4);
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    auto addRow = [this, form](const QString& qsKey, QWidget* lpField) {
        auto label = new QLabel(this);
        m_labels.append({label, qsKey});
        form->addRow(label, lpField);
    };

    auto models = new QComboBox(this);
    addRow(QStringLiteral("cfgble_001"), models);
    m_main.caption("type", models, &m_models, QStringLiteral("0"));

    if (layout.nIdxKind >= 0) {
        m_mainIdx = indexCaptions(QString::fromLatin1(layout.lpIdxKey), layout.nIdxCount, layout.bIdxAligned);
        auto idx = new QComboBox(this);
        addRow(QStringLiteral("cfgble_002"), idx);
        m_main.caption("idx", idx, &m_mainIdx, QStringLiteral("1"));
        m_indexBoxes.append({idx, nullptr, layout.nIdxKind, &m_mainIdx, 0});
    }
    if (layout.nLightSensors > 0) {
        m_lights.add(QStringLiteral("0"), QStringLiteral("cfgt17_049"));
        for (int n = 1; n <= layout.nLightSensors; ++n)
            m_lights.addComposed(QString::number(n), [n] {
                return QStringLiteral("%1 %2%3").arg(zorTr(QStringLiteral("cfgt17_073")), glqsBtPreffix_LS).arg(n);
            });
        auto lights = new QComboBox(this);
        addRow(QStringLiteral("cfgt17_073"), lights);
        m_main.caption("ls", lights, &m_lights, QStringLiteral("0"));
    }
    if (layout.bThreshold) {
        auto row = new QWidget(this);
        auto h = new QHBoxLayout(row);
        h->setContentsMargins(0, 0, 0, 0);
        auto thld = new QSpinBox(row);
        thld->setRange(0, kThresholdMax);
        auto off = new QCheckBox(row);
        m_labels.append({off, QStringLiteral("cfgble_004")});
        h->addWidget(thld);
        h->addWidget(off);
        h->addStretch();
        addRow(QStringLiteral("cfgble_003"), row);
        m_main.integer("thld", thld, 0).check("thldOff", off, false);
        connect(off, &QCheckBox::toggled, thld, [thld](bool bOff) { thld->setEnabled(!bOff); });
    }
    if (layout.nTsChannels > 0) {
        m_channelIdx = indexCaptions(QStringLiteral("cfgt17_043"), kChannelIndexCount, false);
        for (int c = 1; c <= layout.nTsChannels; ++c) {
            auto row = new QWidget(this);
            auto h = new QHBoxLayout(row);
            h->setContentsMargins(0, 0, 0, 0);
            auto use = new QCheckBox(row);
            auto idx = new QComboBox(row);
            h->addWidget(use);
            h->addWidget(idx);
            h->addStretch();
            addRow(layout.nTsChannels > 1 ? QStringLiteral("cfgble_006") : QStringLiteral("cfgble_005"), row);
            if (layout.nTsChannels > 1)
                m_labels.last().second += QStringLiteral("|%1").arg(c);
            const QByteArray type = channelAttr("type", c, layout.nTsChannels).toLatin1();
            const QByteArray nidx = channelAttr("idx", c, layout.nTsChannels).toLatin1();
            m_channels.check(type.constData(), use, false)
                .caption(nidx.constData(), idx, &m_channelIdx, QString::number(qMin(c, kChannelIndexCount)));
            idx->setEnabled(false);
            connect(use, &QCheckBox::toggled, idx, &QWidget::setEnabled);
            m_indexBoxes.append({idx, use, IdxTemp, &m_channelIdx, 0});
        }
    }
    for (int i = 0; i < m_indexBoxes.size(); ++i)
        watchIndex(i);
    translateForm();
    for (IndexBox& box : m_indexBoxes)
        box.nShown = shownIndex(box);
    watchEdits(this);
}

int ZOR_Form_Config_Ble_DevType::shownIndex(const IndexBox& box) const
{
    if (box.lpUse && !box.lpUse->isChecked())
        return 0;
    return box.lpList->currentCode(box.lpBox).toInt();
}

void ZOR_Form_Config_Ble_DevType::watchIndex(int nBox)
{
    auto changed = [this, nBox] {
        IndexBox& box = m_indexBoxes[nBox];
        const int nNew = shownIndex(box);
        if (nNew == box.nShown)
            return;
        const int nOld = box.nShown;
        box.nShown = nNew;
        indexChanged(box.nKind, nOld, nNew, box.lpList->captionOf(QString::number(nOld)),
            box.lpList->captionOf(QString::number(nNew)));
    };
    connect(m_indexBoxes[nBox].lpBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this, changed);
    if (m_indexBoxes[nBox].lpUse)
        connect(m_indexBoxes[nBox].lpUse, &QCheckBox::toggled, this, changed);
}

void ZOR_Form_Config_Ble_DevType::indexChanged(int, int, int, const QString&, const QString&)
{
}

QVector<int> ZOR_Form_Config_Ble_DevType::usedIndexes(int nKind) const
{
    QVector<int> used;
    for (const IndexBox& box : m_indexBoxes) {
        const int n = shownIndex(box);
        if (box.nKind == nKind && n > 0)
            used.append(n);
    }
    return used;
}

void ZOR_Form_Config_Ble_DevType::setTakenIndexes(int nKind, const QSet<int>& taken)
{
    if (nKind < 0 || nKind >= IdxKindCount)
        return;
    m_taken[nKind] = taken;
    refreshIndexes();
}

void ZOR_Form_Config_Ble_DevType::refreshIndexes()
{
    for (const IndexBox& box : m_indexBoxes)
        markTaken(box.lpBox, *box.lpList, m_taken[box.nKind]);
}

void ZOR_Form_Config_Ble_DevType::translateForm()
{
    for (const auto& label : m_labels) {
        const QStringList parts = label.second.split(QLatin1Char('|'));
        QString qsText = zorTr(parts.first());
        if (parts.size() > 1)
            qsText = qsText.arg(parts[1]);
        if (auto l = qobject_cast<QLabel*>(label.first))
            l->setText(qsText);
        else if (auto b = qobject_cast<QCheckBox*>(label.first))
            b->setText(qsText);
    }
    for (const ZOR_FormBinding::Row& row : m_main.rows() + m_channels.rows())
        if (row.kind == ZOR_FormBinding::Caption)
            row.lpList->fill(static_cast<QComboBox*>(row.lpWidget));
    refreshIndexes();
}

void ZOR_Form_Config_Ble_DevType::setDefaultParam()
{
    m_main.setDefaults();
    m_channels.setDefaults();
}

void ZOR_Form_Config_Ble_DevType::readFormParam(CXMLWorkData* lpRoot)
{
    if (!lpRoot || !m_layout.lpWord)
        return;
    m_main.readNode(lpRoot, ZOR_SettingsNode::name(QString::fromLatin1(m_layout.lpWord), m_nSlot));
    if (m_layout.nTsChannels > 0)
        m_channels.readNode(lpRoot, ZOR_SettingsNode::name(QStringLiteral("TS"), m_nSlot));
}

void ZOR_Form_Config_Ble_DevType::writeFormParam(CXMLWorkData* lpRoot)
{
    if (!lpRoot || !m_layout.lpWord)
        return;
    m_main.writeNode(lpRoot, ZOR_SettingsNode::name(QString::fromLatin1(m_layout.lpWord), m_nSlot));
    if (m_layout.nTsChannels > 0)
        m_channels.writeNode(lpRoot, ZOR_SettingsNode::name(QStringLiteral("TS"), m_nSlot));
}
