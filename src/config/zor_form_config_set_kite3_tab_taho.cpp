#include "config/zor_form_config_set_kite3_tab_taho.h"

namespace {

using Tab = ZOR_Form_Config_Set_Kite3_Tab;

const Tab::Box kBoxes[] = {
    {98, "cfgkt_033"},
    {99},
    {100, "cfgkt_034"},
    {101},
    {102},
    {103},
};

} // namespace

ZOR_Form_Config_Set_Kite3_Tab_Taho::ZOR_Form_Config_Set_Kite3_Tab_Taho(QWidget* parent)
    : ZOR_Form_Config_Set_Kite3_Tab(parent)
{
    setTabName(QStringLiteral("Taho"), "cfgkt_014");
    addBoxes(kBoxes);
    layoutByVersion();
}
