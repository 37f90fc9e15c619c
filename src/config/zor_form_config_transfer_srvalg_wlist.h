#ifndef ZOR_FORM_CONFIG_TRANSFER_SRVALG_WLIST_H
#define ZOR_FORM_CONFIG_TRANSFER_SRVALG_WLIST_H

// "Список разрешенных операторов" of one SIM card, in priority order ("oc1"
// the highest), with "dw" (stay offline when the current operator is not
// listed) and "check" (search for the preferred operator every 30 minutes),
// kept in "SIM<n>WLIST". The up and down buttons swap the selected row's
// code with its neighbour; past either end they do nothing.
// Edits in place like the black list; cursors as there.

#include "config/zor_form_config.h"
#include "config/zor_formbinding.h"
#include "config/zor_operatorcoderows.h"

#include <memory>

namespace Ui {
class ZOR_Form_Config_Transfer_SrvAlg_WList;
}

class ZOR_Form_Config_Transfer_SrvAlg_WList : public ZOR_Form_Config
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_Transfer_SrvAlg_WList(QWidget* parent = nullptr);
    ~ZOR_Form_Config_Transfer_SrvAlg_WList() override;

    void initForm() override;
    void translateForm() override;
    void setDefaultParam() override;
    // lpNode: the list's own node ("SIM1WLIST"), which the transfer page opens
    // (to read without creating it, to write created and cleared).
    void readFormParam(CXMLWorkData* lpNode) override;
    void writeFormParam(CXMLWorkData* lpNode) override;

    void setSimNumber(int nSim);
    QString nodeName() const;

    ZOR_OperatorCodeRows* rows() { return &m_rows; }

public slots:
    void slot_pressed_Btn_Up();
    void slot_pressed_Btn_Down();

private:
    std::unique_ptr<Ui::ZOR_Form_Config_Transfer_SrvAlg_WList> ui;
    ZOR_FormBinding m_bind;
    ZOR_OperatorCodeRows m_rows;
    int m_nSim = 1;
};

#endif
