#include "config/zor_form_config_set_kite3_tab_main.h"

namespace {

using Tab = ZOR_Form_Config_Set_Kite3_Tab;

const Tab::Box kBoxes[] = {
    {1, "tmikte_123", "%1", Tab::Fixed},
    {2, "tmikte_124", "%1", Tab::Fixed},
    {3, "tmikte_125", "%1", Tab::Fixed},
    {4, "cfgkt_020", "%1", Tab::Default},
    {5, "cfgkt_021", "%1", Tab::Default},
    {6, "cfgkt_022", "%1", Tab::Default},
    {7, "tmikte_145", "%1", Tab::Default},
    {19, "tmikte_158", "%1", Tab::Default},
    {20, "tmikte_159", "%1", Tab::Default},
    {21, "tmikte_161", "%1 1"},
    {22, "tmikte_161", "%1 2"},
    {23, "tmikte_161", "%1 3"},
    {24, "tmikte_161", "%1 4"},
    {25, "tmikte_161", "%1 5"},
    {26, "tmikte_161", "%1 6"},
    {27, "tmikte_161", "%1 7"},
    {28, "tmikte_161", "%1 8"},
    {29, "cfgkt_024", "%1 1-8", Tab::Default},
    {30, "cfgkt_024", "%1 9-16"},
    {31, "cfgkt_025", "%1 1-8", Tab::Default},
    {32, "cfgkt_025", "%1 9-16"},
    {33, "tmikte_165", "%1 1"},
    {34, "tmikte_165", "%1 2"},
    {35, "tmikte_166", "%1 1"},
    {36, "tmikte_166", "%1 2"},
    {37, "tmikte_167"},
    {45, "tmikte_170", "%1 1"},
    {46, "tmikte_170", "%1 2"},
    {47, "tmikte_170", "%1 3"},
    {48, "tmikte_170", "%1 4"},
    {49, "tmikte_170", "%1 5"},
    {50, "tmikte_170", "%1 6"},
    {51, "tmikte_170", "%1 7"},
    {52, "tmikte_170", "%1 8"},
    {123, "tmikte_243"},
    {124, "tmikte_244"},
    {125, "tmikte_245"},
    {126, "cfgkt_024", "%1 17-24"},
    {127, "tmikte_165", "%1 3"},
    {128, "tmikte_165", "%1 4"},
    {129, "tmikte_165", "%1 5"},
    {130, "tmikte_165", "%1 6"},
    {131, "tmikte_165", "%1 7"},
    {132, "tmikte_165", "%1 8"},
    {133, "tmikte_166", "%1 3"},
    {134, "tmikte_166", "%1 4"},
    {135, "tmikte_166", "%1 5"},
    {136, "tmikte_166", "%1 6"},
    {137, "tmikte_166", "%1 7"},
    {138, "tmikte_166", "%1 8"},
    {200, "tmikte_296"},
    {205, "tmikte_302"},
    {206, "tmikte_303"},
};

} // namespace

ZOR_Form_Config_Set_Kite3_Tab_Main::ZOR_Form_Config_Set_Kite3_Tab_Main(QWidget* parent)
    : ZOR_Form_Config_Set_Kite3_Tab(parent)
{
    setTabName(QStringLiteral("Main"), "cfgkt_010");
    addBoxes(kBoxes);
    layoutByVersion();
}
