#include "report_engine/pdf_export.h"

#include <QBuffer>
#include <QFileInfo>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include "platform/write_protection.h"
#include "report_engine/painter.h"
#include "report_engine/report_error.h"

namespace report_engine {

namespace {

[[noreturn]] void fail(const QString& path, const QString& reason) {
    throw WriteError(QStringLiteral("Cannot write the PDF file \"%1\": %2").arg(path, reason),
                     reason);
}

bool writeProtected(const QString& path) {
    const QFileInfo file(path);
    const QFileInfo folder(file.absolutePath());
    return (file.exists() && platform::isWriteProtected(file)) || !folder.isDir() ||
           platform::isWriteProtected(folder);
}

// A device or pipe (/dev/stdout, say) is written to; a new file in its place would replace it.
bool isDevice(const QString& path) {
    const QFileInfo file(path);
    return file.exists() && !file.isFile() && !file.isDir();
}

QPageLayout layoutOf(const PageSetup& setup) {
    const QPageSize size(QSizeF(setup.paper.width() / double(kTwipsPerInch),
                                setup.paper.height() / double(kTwipsPerInch)),
                         QPageSize::Inch, QString(), QPageSize::ExactMatch);
    return QPageLayout(size, setup.orientation, QMarginsF(0, 0, 0, 0));
}

// The whole PDF, made in memory: the file then gets it in a few plain writes, so that a failure
// among them still carries the system's cause (a buffered write that fails later loses it).
QByteArray pdfBytes(const PageModel& model, const QString& path, const QString& title,
                    const Calibration& calibration) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(title);
    writer.setCreator(QStringLiteral("Mixorama"));
    if (!writer.setPageLayout(layoutOf(model.setup))) {
        fail(path, QStringLiteral("the paper size is not valid"));
    }
    QPainter painter;
    if (!painter.begin(&writer)) {
        fail(path, QStringLiteral("the PDF could not be started"));
    }
    for (qsizetype i = 0; i < model.pages.size(); ++i) {
        if (i > 0 && !writer.newPage()) {
            fail(path, QStringLiteral("a new page could not be started"));
        }
        drawPage(painter, model.pages[i], 1.0, calibration);
    }
    painter.end();
    return bytes;
}

// Into a file opened unbuffered: a write that stops short is followed by one that fails and
// says why (a full disk).
void writeBytes(QFileDevice& file, const QByteArray& bytes, const QString& path) {
    for (qint64 done = 0; done < bytes.size();) {
        const qint64 written = file.write(bytes.constData() + done, bytes.size() - done);
        if (written <= 0) {
            fail(path, file.errorString());
        }
        done += written;
    }
}

}  // namespace

void exportPdf(const PageModel& model, const QString& path, const QString& title,
               const Calibration& calibration) {
    if (writeProtected(path)) {
        fail(path, QStringLiteral("the file or its folder is read-only or missing"));
    }
    const QByteArray bytes = pdfBytes(model, path, title, calibration);
    constexpr QIODevice::OpenMode kMode = QIODevice::WriteOnly | QIODevice::Unbuffered;
    if (isDevice(path)) {
        QFile device(path);
        if (!device.open(kMode)) {
            fail(path, device.errorString());
        }
        writeBytes(device, bytes, path);
        return;
    }
    QSaveFile file(path);
    if (!file.open(kMode)) {
        fail(path, file.errorString());
    }
    try {
        writeBytes(file, bytes, path);
    } catch (const WriteError&) {
        file.cancelWriting();
        throw;
    }
    if (!file.commit()) {
        fail(path, file.errorString());
    }
}

}  // namespace report_engine
