// zor-tool's own parsing of what a user types: the field-set text and its
// hex form, hex bytes (with "0x", blanks and ":"), and element paths of a
// settings document, read and created; and the whole input as a term
// script. Input: up to three lines, the mask text, the hex text and the path.

#include "zor_tool.h"
#include "zor_tool_common.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>

namespace {

QTemporaryDir* workDir;
QFile* nowhere;

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    new QCoreApplication(*argc, *argv);
    workDir = new QTemporaryDir();
    nowhere = new QFile(QStringLiteral("/dev/null"));
    nowhere->open(QIODevice::WriteOnly);
    ZorTool::out().setDevice(nowhere);
    ZorTool::err().setDevice(nowhere);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QList<QByteArray> parts = QByteArray(reinterpret_cast<const char*>(data), int(size)).split('\n');
    const QString mask = QString::fromUtf8(parts.value(0));
    const QString hex = QString::fromUtf8(parts.value(1));
    const QString path = QString::fromUtf8(parts.value(2));

    QByteArray bytes;
    QString error;
    ZorTool::parseHex(hex, bytes, &error);
    toolDecode({QStringLiteral("decode"), QStringLiteral("--version"), QStringLiteral("3"), QStringLiteral("--mask"),
        mask, QStringLiteral("--hex"), hex, QStringLiteral("--lang"), QStringLiteral("keys")});
    toolDecode({QStringLiteral("decode"), QStringLiteral("--version"), QStringLiteral("2"),
        QStringLiteral("--mask-hex"), mask, QStringLiteral("--hex"), hex});
    toolFrame({QStringLiteral("frame"), mask, QStringLiteral("--payload"), hex});
    toolUnframe({QStringLiteral("unframe"), hex});

    const QString file = workDir->filePath(QStringLiteral("doc.xml"));
    QFile doc(file);
    if (doc.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        doc.write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<CONFIG><A x=\"1\"><B y=\"2\"/></A><A/></CONFIG>\n");
        doc.close();
    }
    toolSettings({QStringLiteral("settings"), QStringLiteral("get"), file, path, QStringLiteral("x")});
    toolSettings({QStringLiteral("settings"), QStringLiteral("set"), file, path, QStringLiteral("z"), mask});
    toolSettings({QStringLiteral("settings"), QStringLiteral("del"), file, path});
    toolSettings({QStringLiteral("settings"), QStringLiteral("paths"), file});

    // The script is read and checked before any port is opened; this port
    // name is refused right after.
    const QString script = workDir->filePath(QStringLiteral("script.txt"));
    QFile scriptFile(script);
    if (scriptFile.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        scriptFile.write(reinterpret_cast<const char*>(data), qint64(size));
        scriptFile.close();
    }
    toolTerm({QStringLiteral("term"), QStringLiteral("--port"), QStringLiteral("none"), QStringLiteral("--script"),
        script, QStringLiteral("--expect"), mask, hex});
    return 0;
}
