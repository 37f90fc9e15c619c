#ifndef ZOR_FORM_CONFIG_RS_PARAM_DTACAN_H
#define ZOR_FORM_CONFIG_RS_PARAM_DTACAN_H

// CAN data passed over the line: node "DTCN" with "address" (0..255,
// default 1). The page never adds the node to a configuration: it reads the
// address when the node is there and writes it back only then.

#include "config/zor_captionlist.h"
#include "config/zor_form_config_rs_device.h"

class ZOR_Form_Config_RS_Param_DtaCan : public ZOR_Form_Config_RS_Device
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_RS_Param_DtaCan(QWidget* parent = nullptr);
    bool isNodePresent() const { return m_bPresent; }

public slots:
    void readFormParam(CXMLWorkData* lpRoot) override;
    void writeFormParam(CXMLWorkData* lpRoot) override;
    void setDefaultParam() override;

private:
    bool m_bPresent = false;
};

#endif
