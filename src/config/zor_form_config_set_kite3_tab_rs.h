#ifndef ZOR_FORM_CONFIG_SET_KITE3_TAB_RS_H
#define ZOR_FORM_CONFIG_SET_KITE3_TAB_RS_H

// Field-set tab: devices on the serial lines: fuel level sensors on RS-485 and RS-232,
// their temperatures and frequencies.

#include "config/zor_form_config_set_kite3_tab.h"

class ZOR_Form_Config_Set_Kite3_Tab_RS : public ZOR_Form_Config_Set_Kite3_Tab
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_Set_Kite3_Tab_RS(QWidget* parent = nullptr);
};

#endif
