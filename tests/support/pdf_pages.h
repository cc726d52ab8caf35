#pragma once

#include <QImage>
#include <QString>
#include <QVector>

// Measuring what a PDF page shows: its first page rendered by pdftoppm, and the dark lines
// found along a row or a column of it.
namespace testsupport {

inline constexpr int kPdfRenderDpi = 300;
inline constexpr double kMmPerRenderedPixel = 25.4 / kPdfRenderDpi;

// The PDF's first page rendered at kPdfRenderDpi, in grey; a failed render fails the test.
QImage renderedPdfPage(const QString& pdf);

// The middle of each run of dark pixels along a row (or down a column), in pixels.
QVector<double> darkRuns(const QImage& image, int at, Qt::Orientation along);

// The rendered pixel of a page position in twips.
int renderedPixelOf(int twips);

}  // namespace testsupport
