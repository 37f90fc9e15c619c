#ifndef ZOR_FORM_CONFIG_SET_KITE3_TAB_MAIN_H
#define ZOR_FORM_CONFIG_SET_KITE3_TAB_MAIN_H

// Field-set tab: the record head: number, event code and time, states, supplies, inputs and
// outputs, counters, temperatures, milliseconds and engine hours under load.

#include "config/zor_form_config_set_kite3_tab.h"

class ZOR_Form_Config_Set_Kite3_Tab_Main : public ZOR_Form_Config_Set_Kite3_Tab
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_Set_Kite3_Tab_Main(QWidget* parent = nullptr);
};

#endif
