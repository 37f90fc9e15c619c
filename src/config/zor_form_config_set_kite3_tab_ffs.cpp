#include "config/zor_form_config_set_kite3_tab_ffs.h"

namespace {

using Tab = ZOR_Form_Config_Set_Kite3_Tab;

const Tab::Box kBoxes[] = {
    {171, "cfgkt_042"},
    {172},
    {173},
    {174},
    {175},
    {176},
    {177},
    {178},
    {179},
    {180},
    {181},
};

} // namespace

ZOR_Form_Config_Set_Kite3_Tab_FFS::ZOR_Form_Config_Set_Kite3_Tab_FFS(QWidget* parent)
    : ZOR_Form_Config_Set_Kite3_Tab(parent)
{
    setTabName(QStringLiteral("FFS"), "cfgkt_017");
    addBoxes(kBoxes);
    layoutByVersion();
}
