#ifndef ZOR_FORM_CONFIG_TRANSFER_SRVALG_BLIST_H
#define ZOR_FORM_CONFIG_TRANSFER_SRVALG_BLIST_H

// "Список запрещенных операторов" of one SIM card: 20 operator codes the
// terminal must not register with, kept in "SIM<n>BLIST" ("oc1" ... "oc20").
// A dialog window of the transfer page; it edits in place (the page's
// document is what is saved or discarded), so it has only a close button.
//
// readFormParam / writeFormParam get a cursor on the list's own node;
// setSimNumber picks the node's name (nodeName) for the page that opens it.

#include "config/zor_form_config.h"
#include "config/zor_operatorcoderows.h"

#include <memory>

namespace Ui {
class ZOR_Form_Config_Transfer_SrvAlg_BList;
}

class ZOR_Form_Config_Transfer_SrvAlg_BList : public ZOR_Form_Config
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_Transfer_SrvAlg_BList(QWidget* parent = nullptr);
    ~ZOR_Form_Config_Transfer_SrvAlg_BList() override;

    void initForm() override;
    void translateForm() override;
    void setDefaultParam() override;
    // lpNode: the list's own node ("SIM1BLIST"), which the transfer page opens
    // (to read without creating it, to write created and cleared).
    void readFormParam(CXMLWorkData* lpNode) override;
    void writeFormParam(CXMLWorkData* lpNode) override;

    // 1 or 2: the node ("SIM1BLIST", "SIM2BLIST") and the window title.
    void setSimNumber(int nSim);
    QString nodeName() const;

    ZOR_OperatorCodeRows* rows() { return &m_rows; }

private:
    std::unique_ptr<Ui::ZOR_Form_Config_Transfer_SrvAlg_BList> ui;
    ZOR_OperatorCodeRows m_rows;
    int m_nSim = 1;
};

#endif
