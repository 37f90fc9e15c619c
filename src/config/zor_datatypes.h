#ifndef ZOR_DATATYPES_H
#define ZOR_DATATYPES_H

// The data-type codes shared by the Modbus table, the universal wireless
// sensor and the catalogue: a size digit and a kind letter ("1b", "2u",
// "4s", "8f"...; b bits, u unsigned, s signed, f floating point), and their
// captions "1 byte, bits" built from the word keys, in the current language.

#include "config/zor_captionlist.h"

class ZOR_DataTypes
{
public:
    // The 14 codes in list order: 1b 1u 1s 2b 2u 2s 4b 4u 4s 4f 8b 8u 8s 8f.
    static const QStringList& codes();
    // Captions composed at fill time, so a language change shows at once.
    static const ZOR_CaptionList& captionList();
    // Size in bytes of a code (1, 2, 4, 8); 0 for anything else.
    static int sizeOf(const QString& qsCode);
    // Size of a shown caption; 0 when the caption is unknown.
    static int sizeOfCaption(const QString& qsCaption);
};

#endif
