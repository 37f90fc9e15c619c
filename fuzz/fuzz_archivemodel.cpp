// The telemetry window's archive model with its field set read from a
// settings file, both from arbitrary bytes: bytes 0-1 give the length of
// the settings file, the rest is the archive. Every cell of the first and
// last rows is shown, the partial record included; rows and records agree.

#include "zor_tmi_archivemodel.h"
#include "zor_tmi_fieldset.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>

namespace {

QTemporaryDir* workDir;

bool writeFile(const QString& path, const char* data, int size)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(data, size) == size;
}

void showRow(ZOR_TmiArchiveModel& model, int row)
{
    for (int column = 0; column < model.columnCount(); ++column) {
        model.data(model.index(row, column), Qt::DisplayRole);
        model.data(model.index(row, column), Qt::ToolTipRole);
        int offset = 0;
        int length = 0;
        if (!model.columnBytes(column, offset, length))
            continue;
        if (offset < 0 || length < 0 || offset + length > model.recordSize())
            __builtin_trap(); // a column's bytes lie outside its record
    }
    model.recordBytes(row);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    new QCoreApplication(*argc, *argv);
    workDir = new QTemporaryDir();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 2)
        return 0;
    const int total = int(size) - 2;
    const int settingsSize = qMin(total, int(data[0]) | int(data[1]) << 8);
    const char* bytes = reinterpret_cast<const char*>(data) + 2;
    const QString settings = workDir->filePath(QStringLiteral("cfg.xml"));
    const QString archive = workDir->filePath(QStringLiteral("archive.bin"));
    if (!writeFile(settings, bytes, settingsSize) || !writeFile(archive, bytes + settingsSize, total - settingsSize))
        return 0;
    ZOR_TmiFieldSet set;
    QString error;
    if (!set.readSettingsFile(settings, &error)) {
        if (error.isEmpty())
            __builtin_trap(); // refused without a reason
        set = ZOR_TmiFieldSet::full(1 + data[0] % 3);
    }
    ZOR_TmiArchiveModel model;
    model.setFieldSet(set);
    if (!model.openFile(archive))
        return 0;
    const int rows = model.rowCount();
    if (rows != model.recordCount() + (model.hasPartialRecord() ? 1 : 0))
        __builtin_trap();
    const int kEdge = 8;
    for (int row = 0; row < rows && row < kEdge; ++row)
        showRow(model, row);
    for (int row = qMax(kEdge, rows - kEdge); row < rows; ++row)
        showRow(model, row);
    model.problem();
    return 0;
}
