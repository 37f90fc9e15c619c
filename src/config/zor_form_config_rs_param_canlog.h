#ifndef ZOR_FORM_CONFIG_RS_PARAM_CANLOG_H
#define ZOR_FORM_CONFIG_RS_PARAM_CANLOG_H

// A CAN-LOG bus reader on the line: it works at the line's own settings and keeps no node.

#include "config/zor_form_config_rs_param.h"

class ZOR_Form_Config_RS_Param_CanLog : public ZOR_Form_Config_RS_Param
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_RS_Param_CanLog(QWidget* parent = nullptr);
};

#endif
