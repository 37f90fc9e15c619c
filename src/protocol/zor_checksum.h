#ifndef ZOR_CHECKSUM_H
#define ZOR_CHECKSUM_H

// Checksums used by the frames, the settings documents and the telemetry
// records. A length below 1 means "no bytes" everywhere.

#include <cstdint>

// XOR of len bytes; 0 for no bytes.
unsigned char getSumDataToByte(const unsigned char* data, int len);
unsigned char getSumDataToByte(const char* data, int len);

// CRC-8: polynomial 0x31, MSB first, start 0xFF, no reflection, no final XOR.
unsigned char SummCRC8(const unsigned char* data, int len);

// CRC-16/CCITT-FALSE: polynomial 0x1021, MSB first, start 0xFFFF,
// no reflection, no final XOR.
unsigned short SummCRC16(const unsigned char* data, int len);

// The same CRC-16 continued from a previous value (or any start value);
// with no bytes they return start. Both names are in use by callers.
unsigned short SummPlusCRC16(unsigned short start, const unsigned char* data, int len);
unsigned short eval_crc16(unsigned short start, const unsigned char* data, int len);

#endif
