// A stand-in module for the host's tests: exports the four entry points,
// adds one menu entry on 2030 like the real module, and lets the test send
// any message to the host and watch every message the host sends.

#include "module/zor_host_link.h"

#include <cstring>

namespace {
ZOR_SendMessageFunc fnSend = nullptr;
void (*fnObserver)(int, unsigned long, unsigned long) = nullptr;
uint64_t nMenuHandle = 0;
} // namespace

extern "C" {

int IsZorLibraryV()
{
    return 1;
}

szLibraryInfo* GetLibraryInfo(szLibraryInfo* info)
{
    std::memset(info, 0, sizeof *info);
    info->lpLibrary = &fnSend;
    std::strcpy(info->szName, "ZOR_Fake");
    std::strcpy(info->szCaption, "ZOR Fake");
    info->nParam1 = 3;
    info->nFlags = 1;
    return info;
}

void Initialize(ZOR_SendMessageFunc fn)
{
    fnSend = fn;
}

unsigned long FakeModuleSend(int nMessage, unsigned long wParam, unsigned long lParam)
{
    return fnSend ? fnSend(&fnSend, nMessage, wParam, lParam) : 0;
}

void FakeModuleObserve(void (*fn)(int, unsigned long, unsigned long))
{
    fnObserver = fn;
}

uint64_t FakeModuleMenuHandle()
{
    return nMenuHandle;
}

void ReceiveMessage(void*, int nMessage, unsigned long wParam, unsigned long lParam)
{
    if (fnObserver)
        fnObserver(nMessage, wParam, lParam);
    if (nMessage == ZOR_MSG_CREATE_MENU) {
        szMenuItem item{};
        std::strcpy(item.szCaption, "Fake entry");
        FakeModuleSend(ZOR_MSG_MENU_ADD, reinterpret_cast<unsigned long>(&item), 0);
        nMenuHandle = item.nMenuHandle;
        uint8_t nEnable = 0;
        FakeModuleSend(ZOR_MSG_MENU_ENABLE, nMenuHandle, reinterpret_cast<unsigned long>(&nEnable));
    }
}
}
