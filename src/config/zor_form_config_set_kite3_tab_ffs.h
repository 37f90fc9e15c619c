#ifndef ZOR_FORM_CONFIG_SET_KITE3_TAB_FFS_H
#define ZOR_FORM_CONFIG_SET_KITE3_TAB_FFS_H

// Field-set tab: the fuel flow meter: state, errors, fuel used, feed and return lines.

#include "config/zor_form_config_set_kite3_tab.h"

class ZOR_Form_Config_Set_Kite3_Tab_FFS : public ZOR_Form_Config_Set_Kite3_Tab
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_Set_Kite3_Tab_FFS(QWidget* parent = nullptr);
};

#endif
