#include "report_samples.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QRegularExpression>
#include <algorithm>

namespace reporttest {

using report::PageItem;

report::PageSetup smallPaper() {
    report::PageSetup setup;
    setup.paper = QSize(12000, 10000);
    setup.leftMargin = setup.topMargin = setup.rightMargin = setup.bottomMargin = 1000;
    return setup;
}

report::RowTable table(const QStringList& fields, const QVector<QVector<QVariant>>& rows) {
    report::RowTable result(fields);
    for (const QVector<QVariant>& row : rows) {
        result.append(row);
    }
    return result;
}

report::Section pageNumberFooter(int height) {
    return report::section(
        "PageFooter", height,
        {report::textBox("txtPageNumber", QRect(0, 0, 1500, 300),
                         [](const report::SectionFormat& format) {
                             return QStringLiteral("Page %1 of").arg(format.pageNumber());
                         }),
         report::textBox("txtPageCount", QRect(1500, 0, 500, 300),
                         [](const report::SectionFormat& format) {
                             return QString::number(format.pageCount());
                         })});
}

namespace {

std::vector<PageItem> sorted(QVector<PageItem> items) {
    std::vector<PageItem> result(items.begin(), items.end());
    std::stable_sort(result.begin(), result.end(), [](const PageItem& a, const PageItem& b) {
        return std::pair(a.rect.top(), a.rect.left()) < std::pair(b.rect.top(), b.rect.left());
    });
    return result;
}

}  // namespace

QVector<PageItem> itemsNamed(const report::Page& page, const QString& name) {
    QVector<PageItem> result;
    for (const PageItem& item : sorted(page.items)) {
        if (item.name == name) {
            result.append(item);
        }
    }
    return result;
}

QStringList textsNamed(const report::Page& page, const QString& name) {
    QStringList result;
    for (const PageItem& item : itemsNamed(page, name)) {
        result.append(item.text);
    }
    return result;
}

QStringList textsOf(const report::Page& page) {
    QStringList result;
    for (const PageItem& item : sorted(page.items)) {
        if (item.kind == report::ItemKind::Text) {
            result.append(item.text);
        }
    }
    return result;
}

int pageOf(const report::PageModel& model, const QString& text) {
    for (int i = 0; i < model.pages.size(); ++i) {
        if (textsOf(model.pages[i]).contains(text)) {
            return i;
        }
    }
    return -1;
}

PageItem onlyItem(const report::PageModel& model, const QString& text) {
    QVector<PageItem> found;
    for (const report::Page& page : model.pages) {
        for (const PageItem& item : page.items) {
            if (item.kind == report::ItemKind::Text && item.text == text) {
                found.append(item);
            }
        }
    }
    EXPECT_EQ(found.size(), 1) << "items showing " << text.toStdString();
    return found.value(0);
}

QString runProgram(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(30000) || process.exitCode() != 0) {
        ADD_FAILURE() << program.toStdString()
                      << " failed: " << process.readAllStandardError().toStdString();
    }
    return QString::fromUtf8(process.readAllStandardOutput());
}

// The page size pdfinfo reads, and the paper name it gives that size.
std::pair<QSizeF, QString> pdfPageSize(const QString& path) {
    const QString info = runProgram("pdfinfo", {path});
    const auto match =
        QRegularExpression(R"(Page size:\s+([\d.]+) x ([\d.]+) pts(?: \((\w+)\))?)").match(info);
    EXPECT_TRUE(match.hasMatch()) << info.toStdString();
    return {QSizeF(match.captured(1).toDouble(), match.captured(2).toDouble()), match.captured(3)};
}

}  // namespace reporttest
