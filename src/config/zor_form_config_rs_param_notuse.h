#ifndef ZOR_FORM_CONFIG_RS_PARAM_NOTUSE_H
#define ZOR_FORM_CONFIG_RS_PARAM_NOTUSE_H

// Nothing on the line: no settings, no node.

#include "config/zor_form_config_rs_param.h"

class ZOR_Form_Config_RS_Param_NotUse : public ZOR_Form_Config_RS_Param
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_RS_Param_NotUse(QWidget* parent = nullptr);
};

#endif
