// Arbitrary bytes as the file of an editable list (servers, operators,
// commands): whatever records are read, written back they must read again
// as the same records, less the control characters the writer leaves out.

#include "store/zor_xmllistfile.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const ZOR_XmlListFile list(QStringLiteral("SERVERS"), QStringLiteral("SERVER"),
        {QStringLiteral("NAME"), QStringLiteral("IP"), QStringLiteral("PORT")});
    bool ok = false;
    QList<QStringList> records = list.parse(
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), int(size)), ok);
    for (QStringList& fields : records)
        for (QString& value : fields)
            value = ZOR_XmlListFile::xmlSafe(value);
    bool again = false;
    if (list.parse(list.toBytes(records), again) != records || !again)
        std::abort();
    return 0;
}
