#ifndef ZOR_HOST_LINK_H
#define ZOR_HOST_LINK_H

// The binary contract between a host configurator and this module: message
// codes, the fixed-size records that cross the boundary and the exported C
// entry points. A host needs only this header (and Qt for QByteArray/QIcon).

#include <cstddef>
#include <cstdint>

// Message codes, both directions. wParam/lParam are unsigned long, wide
// enough for a pointer on the 64-bit Linux ABI.
enum ZOR_Message : int {
    // host -> module
    ZOR_MSG_CREATE_MENU = 2030, // build your menu
    ZOR_MSG_LANGUAGE_CHANGED = 2031, // language changed
    ZOR_MSG_MENU_CHOSEN = 2035, // menu entry chosen
    ZOR_MSG_CLOSE_WINDOWS = 2037, // close your windows
    ZOR_MSG_DEVICE_CONNECTED = 2051,
    ZOR_MSG_DEVICE_DISCONNECTED = 2052,
    ZOR_MSG_DEVICE_DATA = 2056, // wParam: QByteArray* with received bytes
    // module -> host
    ZOR_MSG_MENU_ADD = 2032, // wParam: szMenuItem*; host writes the handle
    ZOR_MSG_MENU_UPDATE = 2033, // wParam: szMenuItem* with the stored handle
    ZOR_MSG_MENU_ENABLE = 2036, // wParam: handle, lParam: uint8_t* (1/0)
    ZOR_MSG_GET_COORDSYSTEM = 2038, // wParam: ZOR_RAVEL_CMND_COORDSYSTEM*
    ZOR_MSG_RECEIVE_START = 2053, // wParam: module object
    ZOR_MSG_RECEIVE_STOP = 2054, // wParam: module object
    ZOR_MSG_SEND_TO_DEVICE = 2055, // wParam: QByteArray*, valid during the call
    ZOR_MSG_GET_CONFIG_PARAM = 2356 // wParam: szConfigParam*
};

typedef unsigned long (*ZOR_SendMessageFunc)(void* sender, int message, unsigned long wParam, unsigned long lParam);

#pragma pack(push, 1)

// Module information record, copied whole to the host.
struct szLibraryInfo
{
    void* lpLibrary; // the module object
    char szName[255]; // NUL-terminated, UTF-8
    char szCaption[255]; // NUL-terminated, local 8-bit
    int32_t nParam1;
    int32_t nParam2;
    int32_t nParam3;
    int32_t nParam4;
    uint64_t nFlags;
};
static_assert(sizeof(szLibraryInfo) == 542, "szLibraryInfo is 542 bytes");
static_assert(offsetof(szLibraryInfo, szName) == 8, "name at 8");
static_assert(offsetof(szLibraryInfo, szCaption) == 263, "caption at 263");
static_assert(offsetof(szLibraryInfo, nParam1) == 518, "integers at 518");
static_assert(offsetof(szLibraryInfo, nFlags) == 534, "64-bit value at 534");

// Configuration parameters the host fills on 2356: the balance USSD request.
struct szConfigParam
{
    char szUssdBalance[255];
};
static_assert(sizeof(szConfigParam) == 255, "szConfigParam is 255 bytes");

// GNSS command dialect of the terminal's receiver, asked with 2038.
struct ZOR_RAVEL_CMND_COORDSYSTEM
{
    int32_t nCoordSystem;
};
static_assert(sizeof(ZOR_RAVEL_CMND_COORDSYSTEM) == 4, "one int32");

// Menu-entry record of 2032/2033. The caption buffer size is ours; the
// host reads a NUL-terminated string from offset 28.
enum { ZOR_MENU_CAPTION_SIZE = 256 };
struct szMenuItem
{
    void* lpLibrary; // the module object
    void* lpIcon; // QIcon*, valid only during the call
    uint64_t nMenuHandle; // written by the host on 2032
    int32_t nReserved; // not set by the module
    char szCaption[ZOR_MENU_CAPTION_SIZE];
};
static_assert(offsetof(szMenuItem, lpIcon) == 8, "icon at 8");
static_assert(offsetof(szMenuItem, nMenuHandle) == 16, "handle at 16");
static_assert(offsetof(szMenuItem, szCaption) == 28, "caption at 28");
static_assert(sizeof(szMenuItem) == 28 + ZOR_MENU_CAPTION_SIZE, "no padding");

#pragma pack(pop)

// Exported entry points, resolved by name by the host, which calls them in
// this order: IsZorLibraryV (returns 1), GetLibraryInfo (copies the 542-byte
// record, returns its argument), Initialize (hands over the callback), then
// ReceiveMessage for each message, 2030 first. Messages that arrive before
// Initialize are handled but nothing is sent back.
extern "C" {
typedef int (*ZOR_IsZorLibraryVFunc)();
typedef szLibraryInfo* (*ZOR_GetLibraryInfoFunc)(szLibraryInfo*);
typedef void (*ZOR_InitializeFunc)(ZOR_SendMessageFunc);
typedef void (*ZOR_ReceiveMessageFunc)(void*, int, unsigned long, unsigned long);
// Optional fifth entry point, "SetConfiguratorMode": sets the configurator
// mode; call it before the console is first opened (2035), since the layout
// is chosen when the console is created. 5 selects the RAVEL layout (GNSS
// receiver commands, title "mdln_002"); anything else the default layout.
typedef void (*ZOR_SetConfiguratorModeFunc)(int);
}

#endif
