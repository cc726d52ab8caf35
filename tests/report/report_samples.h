#pragma once

#include <QStringList>

#include "report_engine/report_definition.h"
#include "support/document_summary.h"  // failure messages show texts as text

// Reading the pages of a report.
namespace reporttest {

// The items of a control (texts when the name is null) top to bottom, their texts and tops.
QVector<report_engine::PageItem> itemsNamed(const report_engine::Page& page, const QString& name);
QStringList textsNamed(const report_engine::Page& page, const QString& name);
QList<int> topsOf(const report_engine::Page& page, const QString& name);

}  // namespace reporttest
