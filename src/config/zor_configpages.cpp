#include "config/zor_configpages.h"

#include "config/zor_form_config.h"
#include "config/zor_form_config_bluetooth.h"
#include "config/zor_form_config_set_kite3.h"

const QVector<ZOR_ConfigPage>& zorConfigPages()
{
    static const QVector<ZOR_ConfigPage> pages = {
        {"protocol", "cfgkt_001", &zorCreateConfigForm<ZOR_Form_Config_Set_Kite3>, true},
        {"bluetooth", "cfgble_041", &zorCreateConfigForm<ZOR_Form_Config_Bluetooth>, false},
    };
    return pages;
}
