#include "report_engine/layout.h"

#include <functional>
#include <optional>

#include "report_engine/paginator.h"
#include "report_engine/report_error.h"
#include "report_engine/section_layout.h"

namespace report_engine {

namespace {

// Rows belong to one group while its field's value stays; text ignores case, as the sort does.
bool sameKey(const QVariant& a, const QVariant& b) {
    if (a.typeId() == QMetaType::QString && b.typeId() == QMetaType::QString) {
        return a.toString().compare(b.toString(), Qt::CaseInsensitive) == 0;
    }
    return a == b;
}

QVector<Block> subReportBlocks(const Control& control, const RowView& parent,
                               const std::function<int()>& pageNumber);

// Formats a report's body sections (all but the page header and footer) in print order and
// hands their blocks on.
class BodyWriter {
  public:
    using Sink = std::function<void(Block)>;

    BodyWriter(const ReportDefinition& definition, const RowSource& rows, Sink sink,
               std::function<int()> pageNumber)
        : definition_(definition),
          rows_(rows),
          sink_(std::move(sink)),
          pageNumber_(std::move(pageNumber)),
          repeat_(definition.groups.size()) {
        for (const Group& group : definition.groups) {
            const int field = rows.fieldIndex(group.field);
            if (field < 0) {
                throw ReportError(QStringLiteral("The report \"%1\" groups on \"%2\", a field "
                                                 "its rows do not have.")
                                      .arg(definition.name, group.field));
            }
            groupFields_.append(field);
        }
    }

    void write() {
        const int count = rows_.rowCount();
        printSection(definition_.reportHeader, count > 0 ? 0 : -1, false);
        for (int row = 0; row < count; ++row) {
            const int changed = row == 0 ? 0 : firstChangedGroup(row);
            if (row > 0) {
                closeGroups(changed, row - 1);
            }
            openGroups(changed, row);
            printSection(definition_.detail, row, false);
        }
        if (count > 0) {
            closeGroups(0, count - 1);
        }
        printSection(definition_.reportFooter, count - 1, false);
    }

  private:
    int firstChangedGroup(int row) const {
        for (int level = 0; level < groupFields_.size(); ++level) {
            const int field = groupFields_[level];
            if (!sameKey(rows_.value(row - 1, field), rows_.value(row, field))) {
                return level;
            }
        }
        return int(groupFields_.size());
    }

    void closeGroups(int from, int lastRow) {
        for (int level = int(groupFields_.size()) - 1; level >= from; --level) {
            printSection(definition_.groups[level].footer, lastRow, false);
            setRepeat(level, std::nullopt);
        }
    }

    void openGroups(int from, int row) {
        for (int level = from; level < groupFields_.size(); ++level) {
            const Group& group = definition_.groups[level];
            QVector<Block> header = formatSection(group.header, row, group.keepWithFirstDetail);
            std::optional<Block> repeated;
            if (group.repeatHeader && !header.isEmpty()) {
                repeated = stacked(header);
                repeated->row = -1;
            }
            hand(std::move(header));
            if (repeated) {
                setRepeat(level, std::move(repeated));
            }
        }
    }

    void setRepeat(int level, std::optional<Block> header) {
        repeat_[level] = std::move(header);
        auto snapshot = std::make_shared<QVector<Block>>();
        for (const std::optional<Block>& block : repeat_) {
            if (block) {
                snapshot->append(*block);
            }
        }
        repeatSnapshot_ = snapshot->isEmpty() ? nullptr : std::move(snapshot);
    }

    void printSection(const Section& section, int row, bool keepWithNext) {
        hand(formatSection(section, row, keepWithNext));
    }

    QVector<Block> formatSection(const Section& section, int row, bool keepWithNext) {
        const SectionContext context{RowView(&rows_, row), pageNumber_(), 0};
        QVector<Block> blocks =
            layoutSection(section, context, [this](const Control& control, const RowView& parent) {
                return subReportBlocks(control, parent, pageNumber_);
            });
        if (!blocks.isEmpty()) {
            blocks.last().keepWithNext = blocks.last().keepWithNext || keepWithNext;
        }
        return blocks;
    }

    void hand(QVector<Block>&& blocks) {
        for (Block& block : blocks) {
            block.repeatHeaders = repeatSnapshot_;
            sink_(std::move(block));
        }
    }

    const ReportDefinition& definition_;
    const RowSource& rows_;
    Sink sink_;
    std::function<int()> pageNumber_;
    QVector<int> groupFields_;
    QVector<std::optional<Block>> repeat_;
    std::shared_ptr<const QVector<Block>> repeatSnapshot_;
};

// A sub-report is a body of its own, collected into its control; its page header and footer
// do not print.
QVector<Block> subReportBlocks(const Control& control, const RowView& parent,
                               const std::function<int()>& pageNumber) {
    const std::shared_ptr<const RowSource> rows =
        control.subReportRows ? control.subReportRows(parent) : nullptr;
    const RowTable none;
    QVector<Block> blocks;
    BodyWriter(
        *control.subReport, rows ? *rows : none,
        [&blocks](Block block) { blocks.append(std::move(block)); }, pageNumber)
        .write();
    return blocks;
}

int fixedHeight(const Section& section) {
    return section.prints() ? section.height : 0;
}

// The page header and footer of one page, formatted now that the page count is known.
void addPageBands(const ReportDefinition& definition, Page& page, const RowView& headerRow,
                  const RowView& footerRow, int number, int count) {
    const QRect printable = definition.page.printable();
    const auto runSubReport = [number](const Control& control, const RowView& parent) {
        return subReportBlocks(control, parent, [number] { return number; });
    };
    const auto place = [&](const Section& section, const RowView& row, int top) {
        const Block band = stacked(layoutSection(section, {row, number, count}, runSubReport));
        for (PageItem item : band.items) {
            translate(item, printable.left(), top);
            page.items.append(std::move(item));
        }
        page.items += band.pageItems;
    };
    place(definition.pageHeader, headerRow, printable.top());
    place(definition.pageFooter, footerRow,
          printable.top() + printable.height() - fixedHeight(definition.pageFooter));
}

}  // namespace

PageModel layoutReport(const ReportDefinition& definition, const RowSource& rows) {
    Paginator paginator(definition.page.printable(), fixedHeight(definition.pageHeader),
                        fixedHeight(definition.pageFooter));
    BodyWriter(
        definition, rows, [&paginator](Block block) { paginator.add(std::move(block)); },
        [&paginator] { return paginator.pageNumber(); })
        .write();
    PageModel model;
    model.setup = definition.page;
    model.pages = paginator.finish();
    const int count = int(model.pages.size());
    int lastRow = -1;
    for (int i = 0; i < count; ++i) {
        const Paginator::RowsOnPage onPage = paginator.rowsOnPages().value(i);
        const int first = onPage.first >= 0 ? onPage.first : lastRow;
        lastRow = onPage.last >= 0 ? onPage.last : lastRow;
        addPageBands(definition, model.pages[i], RowView(&rows, first), RowView(&rows, lastRow),
                     i + 1, count);
    }
    return model;
}

}  // namespace report_engine
