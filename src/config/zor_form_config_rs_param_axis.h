#ifndef ZOR_FORM_CONFIG_RS_PARAM_AXIS_H
#define ZOR_FORM_CONFIG_RS_PARAM_AXIS_H

// An AXIS controller on the line: node "AXIS" with "holdTime", seconds a
// value is held, 1..255 (15).

#include "config/zor_captionlist.h"
#include "config/zor_form_config_rs_param.h"
#include "config/zor_formbinding.h"

class QComboBox;

class ZOR_Form_Config_RS_Param_Axis : public ZOR_Form_Config_RS_Param
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_RS_Param_Axis(QWidget* parent = nullptr);

public slots:
    void readFormParam(CXMLWorkData* lpRoot) override;
    void writeFormParam(CXMLWorkData* lpRoot) override;
    void setDefaultParam() override;
    void setFormEnabled(bool bEnabled) override { setEnabled(bEnabled); }
    void translateForm() override;

private:
    ZOR_FormBinding m_bind;
};

#endif
