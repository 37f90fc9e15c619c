#include "zor_dialog_terminalprofile.h"
#include "ui_zor_dialog_terminalprofile.h"

#include "zor_terminal_link.h"

#include "module/zor_language.h"

#include <QCheckBox>
#include <QLabel>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTimer>

namespace {

// The capabilities of the field-set form, one row each.
const struct
{
    bool ZOR_TerminalProfile::*member;
    const char* lpKey;
} kFlags[] = {
    {&ZOR_TerminalProfile::bUseState, "cfgwin_050"},
    {&ZOR_TerminalProfile::bUseModule, "cfgwin_051"},
    {&ZOR_TerminalProfile::bUseGSM, "cfgwin_052"},
    {&ZOR_TerminalProfile::bUseMotochas, "cfgwin_053"},
    {&ZOR_TerminalProfile::bUsePowerBLE, "cfgwin_054"},
    {&ZOR_TerminalProfile::bUseCANState, "cfgwin_055"},
    {&ZOR_TerminalProfile::bUseDrivingQuality, "cfgwin_056"},
    {&ZOR_TerminalProfile::bUsePassager, "cfgwin_057"},
    {&ZOR_TerminalProfile::bUseTires, "cfgwin_058"},
    {&ZOR_TerminalProfile::bUseDisp, "cfgwin_059"},
    {&ZOR_TerminalProfile::bUseVAccelAxels, "cfgwin_060"},
    {&ZOR_TerminalProfile::bUseAinf, "cfgwin_061"},
    {&ZOR_TerminalProfile::bUseCamera, "cfgwin_062"},
    {&ZOR_TerminalProfile::bUseLBS, "cfgwin_063"},
    {&ZOR_TerminalProfile::bUseNaviMore, "cfgwin_064"},
};
const struct
{
    int ZOR_TerminalProfile::*member;
    const char* lpKey;
    int nMax;
} kCounts[] = {
    {&ZOR_TerminalProfile::nMaxCountLinesOut, "cfgwin_070", 16},
    {&ZOR_TerminalProfile::nMaxCountStateIn, "cfgwin_071", 24},
    {&ZOR_TerminalProfile::nMaxCountLinesIn, "cfgwin_072", 8},
    {&ZOR_TerminalProfile::nMaxCountLinesAIn, "cfgwin_073", 8},
    {&ZOR_TerminalProfile::nMaxCountSensorsTemp, "cfgwin_074", 8},
    {&ZOR_TerminalProfile::nRS485FlsMaxCount, "cfgwin_075", 16},
    {&ZOR_TerminalProfile::nMaxCountHighPrecisionTemp, "cfgwin_076", 4},
    {&ZOR_TerminalProfile::nMaxCountHighPrecisionHumidity, "cfgwin_077", 4},
};
const int kAskTimeoutMs = 3000;

} // namespace

ZOR_Dialog_TerminalProfile::ZOR_Dialog_TerminalProfile(QWidget* parent)
    : QDialog(parent)
    , ui(new Ui::ZOR_Dialog_TerminalProfile)
    , m_lpTimeout(new QTimer(this))
{
    ui->setupUi(this);
    setWindowTitle(zorTr(QStringLiteral("cfgwin_030")));
    ui->groupBox_Terminal->setTitle(zorTr(QStringLiteral("cfgwin_031")));
    ui->label_Sims->setText(zorTr(QStringLiteral("cfgwin_032")));
    ui->label_Can->setText(zorTr(QStringLiteral("cfgwin_033")));
    ui->label_Ble->setText(zorTr(QStringLiteral("cfgwin_034")));
    ui->groupBox_Fields->setTitle(zorTr(QStringLiteral("cfgwin_035")));
    ui->pushButton_Ask->setText(zorTr(QStringLiteral("cfgwin_036")));
    ui->comboBox_Can->addItems({zorTr(QStringLiteral("cfgwin_041")), zorTr(QStringLiteral("cfgwin_042"))});

    int nRow = 0;
    for (const auto& flag : kFlags) {
        auto* lpCheck = new QCheckBox(zorTr(QLatin1String(flag.lpKey)), ui->groupBox_Fields);
        ui->gridLayout_Fields->addWidget(lpCheck, nRow % 8, (nRow / 8) * 2, 1, 2);
        m_checks.append(lpCheck);
        ++nRow;
    }
    nRow = 0;
    for (const auto& count : kCounts) {
        auto* lpSpin = new QSpinBox(ui->groupBox_Fields);
        lpSpin->setRange(0, count.nMax);
        auto* lpLabel = new QLabel(zorTr(QLatin1String(count.lpKey)), ui->groupBox_Fields);
        lpLabel->setBuddy(lpSpin);
        ui->gridLayout_Fields->addWidget(lpLabel, nRow, 4);
        ui->gridLayout_Fields->addWidget(lpSpin, nRow, 5);
        m_spins.append(lpSpin);
        ++nRow;
    }

    m_lpTimeout->setSingleShot(true);
    m_lpTimeout->setInterval(kAskTimeoutMs);
    connect(m_lpTimeout, &QTimer::timeout, this, [this] { finishAsking(zorTr(QStringLiteral("cfgwin_040"))); });
    connect(ui->pushButton_Ask, &QPushButton::clicked, this, &ZOR_Dialog_TerminalProfile::slot_clicked_Ask);
    setLink(nullptr);
    setProfile(ZOR_TerminalProfile());
}

ZOR_Dialog_TerminalProfile::~ZOR_Dialog_TerminalProfile() = default;

void ZOR_Dialog_TerminalProfile::setProfile(const ZOR_TerminalProfile& p)
{
    ui->comboBox_Sims->setCurrentIndex(p.nSimCount == 2 ? 1 : 0);
    ui->comboBox_Can->setCurrentIndex(p.nCanVariant == ZOR_TerminalProfile::CanBt ? 1 : 0);
    ui->spinBox_Ble->setValue(p.nBluetoothSlots);
    for (int i = 0; i < m_checks.size(); ++i)
        m_checks[i]->setChecked(p.*kFlags[i].member);
    for (int i = 0; i < m_spins.size(); ++i)
        m_spins[i]->setValue(p.*kCounts[i].member);
}

ZOR_TerminalProfile ZOR_Dialog_TerminalProfile::profile() const
{
    ZOR_TerminalProfile p;
    p.nSimCount = ui->comboBox_Sims->currentIndex() + 1;
    p.nCanVariant = ui->comboBox_Can->currentIndex() == 1 ? ZOR_TerminalProfile::CanBt : ZOR_TerminalProfile::CanExt;
    p.nBluetoothSlots = ui->spinBox_Ble->value();
    for (int i = 0; i < m_checks.size(); ++i)
        p.*kFlags[i].member = m_checks[i]->isChecked();
    for (int i = 0; i < m_spins.size(); ++i)
        p.*kCounts[i].member = m_spins[i]->value();
    return p;
}

void ZOR_Dialog_TerminalProfile::setLink(ZOR_TerminalLink* lpLink)
{
    m_lpLink = lpLink;
    ui->pushButton_Ask->setEnabled(lpLink != nullptr);
    ui->label_AskResult->setText(lpLink ? lpLink->description() : zorTr(QStringLiteral("cfgwin_037")));
}

int ZOR_Dialog_TerminalProfile::simCountOfAnswer(const QByteArray& answer)
{
    static const QRegularExpression re(QStringLiteral("\\*#ICCID [0-3]((?:,\\d+)*)"));
    const QRegularExpressionMatch m = re.match(QString::fromLatin1(answer));
    return m.hasMatch() ? m.captured(1).count(QLatin1Char(',')) : 0;
}

void ZOR_Dialog_TerminalProfile::slot_clicked_Ask()
{
    if (!m_lpLink)
        return;
    m_answer.clear();
    connect(m_lpLink, &ZOR_TerminalLink::signal_Received, this, &ZOR_Dialog_TerminalProfile::slot_Received,
        Qt::UniqueConnection);
    ui->pushButton_Ask->setEnabled(false);
    ui->label_AskResult->setText(zorTr(QStringLiteral("cfgwin_038")));
    m_lpTimeout->start();
    m_lpLink->write(QByteArrayLiteral("*?ICCID 3\r\n"));
}

void ZOR_Dialog_TerminalProfile::slot_Received(const QByteArray& bytes)
{
    m_answer += bytes;
    const int nSims = simCountOfAnswer(m_answer);
    if (nSims == 0 || !m_answer.contains('\n'))
        return;
    ui->comboBox_Sims->setCurrentIndex(nSims >= 2 ? 1 : 0);
    finishAsking(zorTr(QStringLiteral("cfgwin_039")).arg(nSims));
}

void ZOR_Dialog_TerminalProfile::finishAsking(const QString& qsResult)
{
    m_lpTimeout->stop();
    if (m_lpLink)
        disconnect(m_lpLink, &ZOR_TerminalLink::signal_Received, this, &ZOR_Dialog_TerminalProfile::slot_Received);
    ui->pushButton_Ask->setEnabled(m_lpLink != nullptr);
    ui->label_AskResult->setText(qsResult);
}
