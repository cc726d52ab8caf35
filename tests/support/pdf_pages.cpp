#include "support/pdf_pages.h"

#include <gtest/gtest.h>

#include <QProcess>

namespace testsupport {

namespace {

void runTool(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(60000) || process.exitCode() != 0) {
        ADD_FAILURE() << program.toStdString()
                      << " failed: " << process.readAllStandardError().toStdString();
    }
}

bool dark(const QImage& image, int x, int y) {
    return qGray(image.pixel(x, y)) < 128;
}

}  // namespace

QImage renderedPdfPage(const QString& pdf) {
    const QString base = pdf + QStringLiteral(".page");
    runTool("pdftoppm",
            {"-r", QString::number(kPdfRenderDpi), "-gray", "-png", "-singlefile", pdf, base});
    QImage image(base + QStringLiteral(".png"));
    EXPECT_FALSE(image.isNull());
    return image.convertToFormat(QImage::Format_Grayscale8);
}

QVector<double> darkRuns(const QImage& image, int at, Qt::Orientation along) {
    const bool row = along == Qt::Horizontal;
    const int length = row ? image.width() : image.height();
    const auto isDark = [&](int i) { return row ? dark(image, i, at) : dark(image, at, i); };
    QVector<double> runs;
    for (int i = 0; i < length; ++i) {
        if (isDark(i)) {
            const int start = i;
            while (i < length && isDark(i)) {
                ++i;
            }
            runs.append((start + i - 1) / 2.0);
        }
    }
    return runs;
}

int renderedPixelOf(int twips) {
    return twips * kPdfRenderDpi / 1440;
}

}  // namespace testsupport
