// minimal-host: the smallest host of libZOR_Commands, a template to start
// from. It uses both faces of the library:
//  - the plug-in face: the four exported C functions, resolved by name, in
//    the order a host calls them, with a message callback that adds the
//    module's menu entry;
//  - the class-library face: one settings form that writes its values into
//    a settings document, which is then saved.
//
// Usage: minimal-host [settings.xml]     (default: minimal-host.xml)

#include "config/zor_form_config_can_param.h"
#include "module/zor_global.h"
#include "module/zor_host_link.h"
#include "store/cxmlworkdata.h"

#include <QApplication>
#include <QFile>
#include <QIcon>
#include <QLibrary>

#include <cstdio>

namespace {

// The module's messages to its host. A real host adds a menu action on
// 2032, enables it on 2036, forwards the terminal's bytes after 2053 and
// sends the bytes of 2055 to the terminal.
unsigned long onModuleMessage(void*, int nMessage, unsigned long wParam, unsigned long lParam)
{
    if (nMessage == ZOR_MSG_MENU_ADD && wParam) {
        auto* item = reinterpret_cast<szMenuItem*>(wParam);
        item->nMenuHandle = 1; // the host's own handle of the entry
        std::printf("menu entry added: %s\n", item->szCaption);
    } else if (nMessage == ZOR_MSG_MENU_ENABLE && lParam) {
        std::printf("menu entry %s\n", *reinterpret_cast<const uint8_t*>(lParam) ? "enabled" : "disabled");
    }
    return 0;
}

int fail(const char* what, const QString& why)
{
    std::fprintf(stderr, "minimal-host: %s: %s\n", what, qPrintable(why));
    return 1;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    const QString qsFile = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("minimal-host.xml");

    // The plug-in face. This program links the library for the forms, so it
    // loads that same file: a second copy would be a second module.
    QLibrary library(moduleLibraryPath());
    auto isZor = reinterpret_cast<ZOR_IsZorLibraryVFunc>(library.resolve("IsZorLibraryV"));
    auto getInfo = reinterpret_cast<ZOR_GetLibraryInfoFunc>(library.resolve("GetLibraryInfo"));
    auto initialize = reinterpret_cast<ZOR_InitializeFunc>(library.resolve("Initialize"));
    auto receive = reinterpret_cast<ZOR_ReceiveMessageFunc>(library.resolve("ReceiveMessage"));
    if (!isZor || !getInfo || !initialize || !receive)
        return fail("not a module", library.errorString());
    if (isZor() != 1)
        return fail("not a module of this kind", library.fileName());
    szLibraryInfo info{};
    getInfo(&info);
    std::printf("module: %s (%s)\n", info.szName, info.szCaption);
    initialize(&onModuleMessage);
    receive(nullptr, ZOR_MSG_CREATE_MENU, 0, 0);
    receive(nullptr, ZOR_MSG_DEVICE_CONNECTED, 0, 0);

    // The class-library face: a settings form writes its values below the
    // document's root element; closeDocument(true) saves the file.
    QFile::remove(qsFile);
    ZOR_Form_Config_CAN_Param form;
    form.initForm();
    form.translateForm();
    form.setDefaultParam();
    CXMLWorkData root(qsFile, QStringLiteral("CONFIG"));
    if (!root.isValid())
        return fail("cannot open the settings document", root.errorString());
    form.writeFormParam(&root);
    if (!root.closeDocument(true))
        return fail("cannot save the settings document", root.errorString());
    std::printf("settings saved: %s\n", qPrintable(qsFile));
    return 0;
}
