#include "config/zor_form_config_transfer_srvalg_blist.h"

#include "ui_zor_form_config_transfer_srvalg_blist.h"

#include "module/zor_global.h"
#include "module/zor_language.h"
#include "store/cxmlworkdata.h"
#include "store/zor_settingsnode.h"

ZOR_Form_Config_Transfer_SrvAlg_BList::ZOR_Form_Config_Transfer_SrvAlg_BList(QWidget* parent)
    : ZOR_Form_Config(parent)
    , ui(new Ui::ZOR_Form_Config_Transfer_SrvAlg_BList)
{
    ui->setupUi(this);
    setWindowFlags(configDialogFlags());
    setWindowModality(Qt::WindowModal);
    initForm();
    translateForm();
    setDefaultParam();
    watchEdits(this);
}

void ZOR_Form_Config_Transfer_SrvAlg_BList::initForm()
{
    m_rows.build(ui->gridRows);
    connect(ui->btnClose, &QPushButton::clicked, this, &QWidget::close);
}

void ZOR_Form_Config_Transfer_SrvAlg_BList::translateForm()
{
    setWindowTitle(zorTr("cfgsrv_044").arg(zorTr("cfgsrv_012")).arg(m_nSim));
    ui->btnClose->setText(zorTr("cfgsrv_040"));
    m_rows.translate();
}

void ZOR_Form_Config_Transfer_SrvAlg_BList::setDefaultParam()
{
    m_rows.setDefaults();
}

void ZOR_Form_Config_Transfer_SrvAlg_BList::setSimNumber(int nSim)
{
    m_nSim = nSim;
    translateForm();
}

QString ZOR_Form_Config_Transfer_SrvAlg_BList::nodeName() const
{
    return ZOR_SettingsNode::name(QStringLiteral("SIM"), m_nSim, QStringLiteral("BLIST"));
}

void ZOR_Form_Config_Transfer_SrvAlg_BList::readFormParam(CXMLWorkData* lpNode)
{
    if (lpNode)
        m_rows.read(lpNode);
}

void ZOR_Form_Config_Transfer_SrvAlg_BList::writeFormParam(CXMLWorkData* lpNode)
{
    if (!lpNode)
        return;
    m_rows.write(lpNode);
    lpNode->writeParameters();
}

ZOR_Form_Config_Transfer_SrvAlg_BList::~ZOR_Form_Config_Transfer_SrvAlg_BList() = default;
