#ifndef ZOR_FORM_CONFIG_RS_PARAM_CANFMS_H
#define ZOR_FORM_CONFIG_RS_PARAM_CANFMS_H

// An FMS gateway (the truck's FMS CAN interface turned into serial data): no settings, no node.

#include "config/zor_form_config_rs_param.h"

class ZOR_Form_Config_RS_Param_CanFms : public ZOR_Form_Config_RS_Param
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_RS_Param_CanFms(QWidget* parent = nullptr);
};

#endif
