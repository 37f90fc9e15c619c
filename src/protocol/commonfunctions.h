#ifndef COMMONFUNCTIONS_H
#define COMMONFUNCTIONS_H

// Framed commands for the direct (USB) link. A frame is a 16-byte header
// followed by the data part (command text in Windows-1251, then the binary
// parameter block of commands that have one):
//
//   0  4  signature "@ZOR"
//   4  4  first address field, LE, 0
//   8  4  second address field, LE, 1
//  12  2  data length, LE (modulo 65536)
//  14  1  XOR of the data bytes
//  15  1  XOR of header bytes 0..14

#include "protocol/zor_checksum.h"

#include <QByteArray>
#include <QString>

#include <cstdint>

// Commands whose text is fixed: builder name, text.
#define ZOR_FIXED_COMMANDS(X)                                                                                          \
    X(getUsbCommand_DeviceTestMode, "*!TM")                                                                            \
    X(getUsbCommand_GetKey, "*?PASS")                                                                                  \
    X(getUsbCommand_DeviceReset, "*!DEV_RESET")                                                                        \
    X(getUsbCommand_Ping, "*?PING 1")                                                                                  \
    X(getUsbCommand_TM_Type, "*?DKV")                                                                                  \
    X(getUsbCommand_TM_FileChange, "*!DKU")                                                                            \
    X(getUsbCommand_Set_Protection_Off, "*!GN")                                                                        \
    X(getUsbCommand_Set_Protection, "*!GY")                                                                            \
    X(getUsbCommand_Set_Protection_2, "*!G2")                                                                          \
    X(getUsbCommand_Set_Protection_3, "*!G3")                                                                          \
    X(getUsbCommand_DeviceType, "*?V")                                                                                 \
    X(getUsbCommand_DeviceBhr, "*?H")                                                                                  \
    X(getUsbCommand_DeviceImei, "*?S")                                                                                 \
    X(getUsbCommand_ConfigReset, "*!SETT_RESET")                                                                       \
    X(getUsbCommand_RCS_DeviceDisconnect, "*!DELD")                                                                    \
    X(getUsbCommand_RFID, "*?ERFT")                                                                                    \
    X(getUsbCommand_TM, "*?TM")                                                                                        \
    X(getUsbCommand_AnalogValue, "*?AN2G")                                                                             \
    X(getUsbCommand_AD_Value_Fuel, "*?FUEL")                                                                           \
    X(getUsbCommand_AD_Value_Fuel_UN, "*?FUEL_UN")                                                                     \
    X(getUsbCommand_Accel_Param, "*?ACL2")                                                                             \
    X(getUsbCommand_Accel_Reset, "*!ACL_RESET")                                                                        \
    X(getUsbCommand_Dtp_Test, "*?KRAI")                                                                                \
    X(getUsbCommand_Bluetooth_List, "*?BTDEV1")                                                                        \
    X(getUsbCommand_Bluetooth_Cancel, "*!BTDEV0")                                                                      \
    X(getUsbCommand_Disp_Value, "*?DISP")                                                                              \
    X(getUsbCommand_Canlog_CurVer, "*?CANLOG")

// Commands made of a text prefix and a binary parameter block; the block's
// layout belongs to the caller, so it is passed in as it is.
#define ZOR_PREFIX_COMMANDS(X)                                                                                         \
    X(getUsbCommand_File_ReadPage, "*!FR")                                                                             \
    X(getUsbCommand_File_WritePage, "*!FW")                                                                            \
    X(getUsbCommand_File_Info, "*?FV")                                                                                 \
    X(getUsbCommand_Dtp_ReadPageFile, "*!R")                                                                           \
    X(getUsbCommand_WritePage, "*!W")                                                                                  \
    X(getUsbCommand_Accel_Break, "*!ACLI")                                                                             \
    X(getUsbCommand_Accel_AclC, "*!ACL_C:")                                                                            \
    X(getUsbCommand_Dtp_Protection, "*!KRAI")                                                                          \
    X(getUsbCommand_TM_FileWrite, "*!DKW")                                                                             \
    X(getUsbCommand_ClearServerToDevice, "*!SYNC:")                                                                    \
    X(getUsbCommand_SetRun, "*!MLG:")                                                                                  \
    X(getUsbCommand_SetParamValue, "*!SETP ")                                                                          \
    X(getUsbCommand_Taho_Quest, "*?TACH")                                                                              \
    X(getUsbCommand_Taho_File, "*?TACH")                                                                               \
    X(getUsbCommand_FLS_Data_Quest, "*!BTARCH")                                                                        \
    X(getUsbCommand_Camera_Info, "*?DCAM")                                                                             \
    X(getUsbCommand_SD_Photo_Info, "*?DCAM")                                                                           \
    X(getUsbCommand_SD_File, "*!SDFS")                                                                                 \
    X(getUsbCommand_Ainf, "*!AINF")                                                                                    \
    X(getUsbCommand_Log, "*!LOG")                                                                                      \
    X(getUsbCommandToDeviceTest, "*?DATA ")                                                                            \
    X(getUsbCommand_CE_Debug, "*?CEVT")                                                                                \
    X(getUsbCommand_CE_ProgramInfo, "*?CEVT")                                                                          \
    X(getUsbCommand_CE_UserCmd, "*!CEVT ")

class commonFunctions
{
public:
    enum { HeaderSize = 16 };

    // What is wrong with a received frame; FrameOk when nothing is.
    enum FrameFault {
        FrameOk,
        FrameTruncatedHeader, // fewer than 16 bytes
        FrameBadSignature,
        FrameBadHeaderChecksum,
        FrameLengthPastEnd, // the length field asks for more bytes than there are
        FrameTrailingBytes, // bytes after the data part
        FrameBadDataChecksum,
    };

    commonFunctions();

    const QString& signature() const { return m_qsSignature; }

    static unsigned char getSumDataToByte(const unsigned char* data, int len);
    static unsigned char getSumDataToByte(const char* data, int len);
    // XOR of first then second, copied back to back into scratch (which must
    // hold len1 + len2 bytes); 0 when the total length is below 1.
    static unsigned char getSumDataToByte(
        const unsigned char* first, int len1, const unsigned char* second, int len2, unsigned char* scratch);

    void getHeaderCommand(const QString& text, QByteArray& header) const;
    void getHeaderCommand(const QString& text, QByteArray& payload, QByteArray& header) const;
    void getHeaderCommand(QByteArray& data, QByteArray& header) const;

    QByteArray getUsbCommandToDevice(const QString& text) const;
    QByteArray getUsbCommandToDevice(const QString& text, const QByteArray& payload) const;
    QByteArray getUsbArrCommandToDevice(const QByteArray& data) const;

#define ZOR_DECLARE_FIXED(name, text) QByteArray name() const;
#define ZOR_DECLARE_PREFIX(name, text) QByteArray name(const QByteArray& payload) const;
    ZOR_FIXED_COMMANDS(ZOR_DECLARE_FIXED)
    ZOR_PREFIX_COMMANDS(ZOR_DECLARE_PREFIX)
#undef ZOR_DECLARE_FIXED
#undef ZOR_DECLARE_PREFIX

    QByteArray getUsbCommand_Out_On(int n) const;
    QByteArray getUsbCommand_Out_Off(int n) const;
    QByteArray getUsbCommand_Canlog_Ver(int version) const;
    QByteArray getUsbCommand_DeviceSetTime(long t) const;
    QByteArray getUsbCommand_DevicePassword(const QString& password) const;
    QByteArray getUsbCommand_ReadPage(uint32_t page) const;
    QByteArray getUsbCommand_TM_FileRead(uint16_t value) const;

    // Checks a frame without reading past its size; on FrameOk *data (if
    // given) receives the data part.
    FrameFault checkFrame(const QByteArray& frame, QByteArray* data = nullptr) const;

private:
    QByteArray header(const QByteArray& data) const;

    QString m_qsSignature;
    QByteArray m_signatureBytes;
    uint32_t m_nAddress1;
    uint32_t m_nAddress2;
};

// Keyed string scrambling, for a host that wants a stored password or
// login not to be readable at a glance in a settings file. This is NOT
// encryption: the key stream comes from a 32-bit seed (the CRC-32 of the
// key) through xorshift32, so anyone holding this code and the key (or
// enough tries) reads the text. Use it only where the stored text would
// otherwise be plain.
//
// stringEncrypt: the text in Windows-1251 (characters it lacks become "_"),
// each byte XORed with the next key-stream byte, written as upper-case hex
// (two digits per byte), so the result is plain ASCII fit for any settings
// value. stringDecrypt reverses it: false (and qsText untouched) when the
// input is not such hex. decrypt(encrypt(t, k), k) == t for every text t
// of Windows-1251 characters and every key k, the empty key included.
QString stringEncrypt(const QString& qsText, const QString& qsKey);
bool stringDecrypt(const QString& qsHex, const QString& qsKey, QString& qsText);

#endif
