#ifndef ZOR_FORM_CONFIG_RS_PARAM_DV01_H
#define ZOR_FORM_CONFIG_RS_PARAM_DV01_H

// A DV-01 display on the line: no settings; its presence is the empty node
// "DV01".

#include "config/zor_form_config_rs_device.h"

class ZOR_Form_Config_RS_Param_Dv01 : public ZOR_Form_Config_RS_Device
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_RS_Param_Dv01(QWidget* parent = nullptr);
};

#endif
