#include "zor_host_demo.h"

#include "zor_host_module.h"
#include "zor_terminal_link.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QGuiApplication>
#include <QImage>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QScreen>
#include <QTimer>
#include <QWidget>

#include <cstdio>
#include <iterator>

namespace {

// Time for the simulated terminal to answer one command (it waits for the
// line to go quiet before it takes the request).
const int kStepMs = 300;
const int kIccidTimeoutMs = 5000;

// The demo's script. Type: type the text into the free command line and
// send it. Press: click the button (a check box or radio button only when
// not checked yet). PressRavel: the same, only in the RAVEL layout.
enum class Act { Type, Press, PressRavel };
const struct
{
    Act act;
    const char* what;
} kScript[] = {
    {Act::Type, "*?V"},
    {Act::Type, "*?S"},
    {Act::Type, "*?PING 1"},
    {Act::Type, "*!EDIT PHONES:MODE(1)"},
    {Act::Type, "*?HELLO"},
    {Act::Press, "pushButton_Balance"},
    {Act::PressRavel, "radioButton_Ravel_Cmd_1_WGS"},
    {Act::PressRavel, "pushButton_Send_Ravel_Cmd_1"},
    {Act::PressRavel, "pushButton_Send_Ravel_Cmd_3"},
    {Act::PressRavel, "pushButton_TmiSms_Off"},
    {Act::Press, "checkBox_IccId_Sim_1"},
    {Act::Press, "checkBox_IccId_Sim_2"},
    {Act::Press, "pushButton_IccId"},
};

QWidget* findConsole()
{
    for (QWidget* lpWidget : QApplication::topLevelWidgets()) {
        if (lpWidget->isVisible() && lpWidget->findChild<QLineEdit*>(QStringLiteral("lineEdit_Cmd_Any")))
            return lpWidget;
    }
    return nullptr;
}

void print(const QString& qsLine)
{
    std::fputs(qsLine.toUtf8().append('\n').constData(), stdout);
}

} // namespace

ZOR_HostDemo::ZOR_HostDemo(
    ZOR_HostModule* lpModule, QWidget* lpHostWindow, const QString& qsScreenshot, QObject* parent)
    : QObject(parent)
    , m_lpModule(lpModule)
    , m_lpHostWindow(lpHostWindow)
    , m_qsScreenshot(qsScreenshot)
{
}

template <class T>
T* ZOR_HostDemo::console(const char* name) const
{
    return m_lpConsole ? m_lpConsole->findChild<T*>(QLatin1String(name)) : nullptr;
}

void ZOR_HostDemo::start()
{
    QTimer::singleShot(0, this, &ZOR_HostDemo::openConsole);
}

void ZOR_HostDemo::openConsole()
{
    if (!m_lpModule->link() && !m_lpModule->connectLink(ZOR_TerminalLink::create(QStringLiteral("simulator"))))
        return fail(m_lpModule->errorString());
    const QList<QAction*> actions = m_lpModule->menuActions();
    if (actions.isEmpty() || !actions.first()->isEnabled())
        return fail(QStringLiteral("the module's menu entry is missing or disabled"));
    print(QStringLiteral("menu: %1").arg(actions.first()->text()));
    actions.first()->trigger();
    m_lpConsole = findConsole();
    if (!m_lpConsole)
        return fail(QStringLiteral("the console did not open"));
    // Side by side: on a bare X server there are no window frames to tell
    // two overlapping windows apart.
    m_lpHostWindow->setGeometry(0, 0, 400, 720);
    m_lpConsole->setGeometry(410, 0, 860, 720);
    runStep();
}

void ZOR_HostDemo::runStep()
{
    if (m_nStep == int(std::size(kScript)))
        return waitForIccid();
    const auto& step = kScript[m_nStep++];
    int nWaitMs = kStepMs; // for the terminal's answer
    if (step.act == Act::Type) {
        if (!type(QLatin1String(step.what)))
            return;
    } else {
        auto* lpButton = console<QAbstractButton>(step.what);
        auto* lpRavel = console<QWidget>("groupBox_Ravel");
        if (!lpButton || !lpRavel)
            return fail(QStringLiteral("the console has no %1").arg(QLatin1String(step.what)));
        if (lpButton->isCheckable() || (step.act == Act::PressRavel && !lpRavel->isVisible()))
            nWaitMs = 0; // nothing is sent
        if ((step.act == Act::Press || lpRavel->isVisible()) && !(lpButton->isCheckable() && lpButton->isChecked()))
            lpButton->click();
    }
    QTimer::singleShot(nWaitMs, this, &ZOR_HostDemo::runStep);
}

void ZOR_HostDemo::waitForIccid()
{
    auto* lpSim1 = console<QLineEdit>("lineEdit_IccId_Sim_1");
    auto* lpSim2 = console<QLineEdit>("lineEdit_IccId_Sim_2");
    if (lpSim1 && lpSim2 && !lpSim1->text().isEmpty() && !lpSim2->text().isEmpty())
        return finish();
    m_nWaitedMs += kStepMs;
    if (m_nWaitedMs > kIccidTimeoutMs)
        return fail(QStringLiteral("no ICCID reply reached the console"));
    QTimer::singleShot(kStepMs, this, [this] { waitForIccid(); });
}

bool ZOR_HostDemo::type(const QString& qsCommand)
{
    auto* lpLine = console<QLineEdit>("lineEdit_Cmd_Any");
    auto* lpSend = console<QAbstractButton>("pushButton_Send_Cmd_Any");
    if (!lpLine || !lpSend) {
        fail(QStringLiteral("the console has no command line"));
        return false;
    }
    lpLine->clear();
    lpLine->setFocus();
    // Key by key, as a user types, so the console sees its edit signals.
    for (const QChar c : qsCommand) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
        QApplication::sendEvent(lpLine, &press);
    }
    lpSend->click();
    return true;
}

void ZOR_HostDemo::fail(const QString& qsWhy)
{
    std::fprintf(stderr, "zor-host demo: %s\n", qsWhy.toLocal8Bit().constData());
    emit signal_Finished(1);
}

void ZOR_HostDemo::finish()
{
    auto* lpLog = console<QAbstractItemView>("treeWidget");
    if (!lpLog || !lpLog->model())
        return fail(QStringLiteral("the console has no log"));
    const QAbstractItemModel* lpModel = lpLog->model();
    for (int nRow = 0; nRow < lpModel->rowCount(); ++nRow) {
        QStringList cells;
        for (int nColumn = 0; nColumn < lpModel->columnCount(); ++nColumn)
            cells << lpModel->index(nRow, nColumn).data().toString();
        print(cells.join(QStringLiteral(" | ")));
    }
    print(QStringLiteral("ICCID SIM 1: %1").arg(console<QLineEdit>("lineEdit_IccId_Sim_1")->text().trimmed()));
    print(QStringLiteral("ICCID SIM 2: %1").arg(console<QLineEdit>("lineEdit_IccId_Sim_2")->text().trimmed()));
    std::fflush(stdout);
    // The ICCID reply whole, in the details pane under the log.
    lpLog->setCurrentIndex(lpModel->index(lpModel->rowCount() - 1, 3));
    if (auto* lpDetail = console<QAbstractButton>("toolButton_Detail"))
        lpDetail->setChecked(true);
    if (!m_qsScreenshot.isEmpty() && !saveScreenshot())
        return fail(QStringLiteral("cannot save the picture %1").arg(m_qsScreenshot));
    emit signal_Finished(0);
}

bool ZOR_HostDemo::saveScreenshot() const
{
    QApplication::processEvents();
    const QRect area = m_lpHostWindow->frameGeometry().united(m_lpConsole->frameGeometry());
    // On a real X server (Xvfb) take the screen itself; offscreen there is
    // no screen to take, so draw both windows where they stand.
    QImage image;
    if (QGuiApplication::platformName() == QLatin1String("xcb") && QGuiApplication::primaryScreen())
        image =
            QGuiApplication::primaryScreen()->grabWindow(0, area.x(), area.y(), area.width(), area.height()).toImage();
    if (image.isNull()) {
        image = QImage(area.size(), QImage::Format_RGB32);
        image.fill(Qt::darkGray);
        QPainter painter(&image);
        for (QWidget* lpWindow : {m_lpHostWindow, static_cast<QWidget*>(m_lpConsole)})
            painter.drawPixmap(lpWindow->geometry().topLeft() - area.topLeft(), lpWindow->grab());
    }
    return image.save(m_qsScreenshot);
}
