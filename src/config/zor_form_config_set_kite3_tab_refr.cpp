#include "config/zor_form_config_set_kite3_tab_refr.h"

namespace {

using Tab = ZOR_Form_Config_Set_Kite3_Tab;

const Tab::Box kBoxes[] = {
    {182, "cfgkt_043"},
    {183, "tmikte_282", "%1 1"},
    {184, "tmikte_282", "%1 2"},
    {185, "tmikte_282", "%1 3"},
    {186, "tmikte_283", "%1 1"},
    {187, "tmikte_283", "%1 2"},
    {188, "tmikte_283", "%1 3"},
    {189, "tmikte_284"},
    {190, "tmikte_285"},
    {191, "tmikte_286"},
    {192, "tmikte_287"},
    {193, "tmikte_288"},
    {194, "tmikte_289"},
    {195, "cfgkt_053"},
    {196, "cfgkt_044", "%1 2-3"},
    {197, "cfgkt_044", "%1 4-6"},
    {198, "cfgkt_045"},
    {199, "tmikte_294"},
};

} // namespace

ZOR_Form_Config_Set_Kite3_Tab_Refr::ZOR_Form_Config_Set_Kite3_Tab_Refr(QWidget* parent)
    : ZOR_Form_Config_Set_Kite3_Tab(parent)
{
    setTabName(QStringLiteral("Refr"), "cfgkt_016");
    addBoxes(kBoxes);
    layoutByVersion();
}
