#include "config/zor_configpages.h"

#include "config/zor_form_config.h"

const QVector<ZOR_ConfigPage>& zorConfigPages()
{
    static const QVector<ZOR_ConfigPage> pages = {
    };
    return pages;
}
