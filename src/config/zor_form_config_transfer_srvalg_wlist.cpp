#include "config/zor_form_config_transfer_srvalg_wlist.h"

#include "ui_zor_form_config_transfer_srvalg_wlist.h"

#include "module/zor_global.h"
#include "module/zor_language.h"
#include "store/cxmlworkdata.h"
#include "store/zor_settingsnode.h"

ZOR_Form_Config_Transfer_SrvAlg_WList::ZOR_Form_Config_Transfer_SrvAlg_WList(QWidget* parent)
    : ZOR_Form_Config(parent)
    , ui(new Ui::ZOR_Form_Config_Transfer_SrvAlg_WList)
{
    ui->setupUi(this);
    setWindowFlags(configDialogFlags());
    setWindowModality(Qt::WindowModal);
    initForm();
    translateForm();
    setDefaultParam();
    watchEdits(this);
}

void ZOR_Form_Config_Transfer_SrvAlg_WList::initForm()
{
    m_bind.check("dw", ui->checkDw, false).check("check", ui->checkCheck, false);
    m_rows.build(ui->gridRows);
    connect(ui->btnUp, &QToolButton::clicked, this, &ZOR_Form_Config_Transfer_SrvAlg_WList::slot_pressed_Btn_Up);
    connect(ui->btnDown, &QToolButton::clicked, this, &ZOR_Form_Config_Transfer_SrvAlg_WList::slot_pressed_Btn_Down);
    connect(ui->btnClose, &QPushButton::clicked, this, &QWidget::close);
}

void ZOR_Form_Config_Transfer_SrvAlg_WList::translateForm()
{
    setWindowTitle(zorTr("cfgsrv_044").arg(zorTr("cfgsrv_013")).arg(m_nSim));
    ui->checkDw->setText(zorTr("cfgsrv_016"));
    ui->checkCheck->setText(zorTr("cfgsrv_017"));
    ui->labelPriority->setText(zorTr("cfgsrv_018"));
    ui->btnUp->setToolTip(zorTr("cfgsrv_042"));
    ui->btnDown->setToolTip(zorTr("cfgsrv_043"));
    ui->btnClose->setText(zorTr("cfgsrv_040"));
    m_rows.translate();
}

void ZOR_Form_Config_Transfer_SrvAlg_WList::setDefaultParam()
{
    m_bind.setDefaults();
    m_rows.setDefaults();
}

void ZOR_Form_Config_Transfer_SrvAlg_WList::setSimNumber(int nSim)
{
    m_nSim = nSim;
    translateForm();
}

QString ZOR_Form_Config_Transfer_SrvAlg_WList::nodeName() const
{
    return ZOR_SettingsNode::name(QStringLiteral("SIM"), m_nSim, QStringLiteral("WLIST"));
}

void ZOR_Form_Config_Transfer_SrvAlg_WList::readFormParam(CXMLWorkData* lpNode)
{
    if (!lpNode)
        return;
    m_bind.read(lpNode);
    m_rows.read(lpNode);
}

void ZOR_Form_Config_Transfer_SrvAlg_WList::writeFormParam(CXMLWorkData* lpNode)
{
    if (!lpNode)
        return;
    m_bind.write(lpNode);
    m_rows.write(lpNode);
    lpNode->writeParameters();
}

void ZOR_Form_Config_Transfer_SrvAlg_WList::slot_pressed_Btn_Up()
{
    m_rows.moveCurrentRow(-1);
}

void ZOR_Form_Config_Transfer_SrvAlg_WList::slot_pressed_Btn_Down()
{
    m_rows.moveCurrentRow(1);
}

ZOR_Form_Config_Transfer_SrvAlg_WList::~ZOR_Form_Config_Transfer_SrvAlg_WList() = default;
