#include "config/zor_form_config_set_kite3_tab_ffs.h"

namespace {

using Tab = ZOR_Form_Config_Set_Kite3_Tab;

const Tab::Box kBoxes[] = {
    {171, "cfgkt_042"},
    {172, "tmikte_267"},
    {173, "tmikte_268"},
    {174, "tmikte_269"},
    {175, "tmikte_270"},
    {176, "tmikte_271"},
    {177, "tmikte_272"},
    {178, "tmikte_273"},
    {179, "tmikte_274"},
    {180, "tmikte_275"},
    {181, "tmikte_276"},
};

} // namespace

ZOR_Form_Config_Set_Kite3_Tab_FFS::ZOR_Form_Config_Set_Kite3_Tab_FFS(QWidget* parent)
    : ZOR_Form_Config_Set_Kite3_Tab(parent)
{
    setTabName(QStringLiteral("FFS"), "cfgkt_017");
    addBoxes(kBoxes);
    layoutByVersion();
}
