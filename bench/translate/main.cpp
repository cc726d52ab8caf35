// bench_translate [--runs R]: the Jet translator on long and deeply nested statements. Time per
// character that stays flat as the statements grow shows that the work is linear in their
// length. Nesting past the statement limit is timed in the clauses pass alone, which takes any
// depth; the whole translation refuses it at once.
#include <QCoreApplication>
#include <QTextStream>
#include <functional>
#include <vector>

#include "engine/jet_clauses.h"
#include "engine/jet_dialect.h"
#include "engine/jet_error.h"
#include "timing.h"

namespace {

QTextStream out(stdout);

struct Shape {
    const char* name;
    std::function<QString(int)> statement;  // for a size n
    std::vector<int> sizes;
    bool clausesOnly = false;  // time arrangeGroupingAndOrder instead of translateJetSql
};

QString times(const char* piece, int n) {
    return QString::fromLatin1(piece).repeated(n);
}

std::vector<Shape> shapes() {
    const std::vector<int> flat{10000, 40000, 160000};
    return {
        {"nested ( ... ), clauses pass",
         [](int n) { return "SELECT " + times("(", n) + "a" + times(")", n); },
         {2000, 8000, 30000, 120000},
         true},
        {"nested grouped subqueries, clauses pass",
         [](int n) { return times("(SELECT a FROM t GROUP BY a HAVING a IN ", n); },
         {2000, 8000, 30000},
         true},
        {"30,000 ( refused", [](int n) { return "SELECT " + times("(", n); }, {30000}},
        {"ORDER BY with many terms",
         [](int n) { return "SELECT a FROM t ORDER BY " + times("Mid(a, 1) DESC, b, ", n) + "1"; },
         flat},
        {"GROUP BY with many keys",
         [](int n) { return "SELECT a FROM t GROUP BY " + times("a, Left(b, 2), ", n) + "c"; },
         flat},
        {"IN list of text literals",
         [](int n) { return "SELECT a FROM t WHERE a IN (" + times("'x;y', \"z\", ", n) + "'w')"; },
         flat},
        {"long runs of blanks",
         [](int n) { return "SELECT a" + times(" ", 10 * n) + "FROM t" + times("\n", 10 * n); },
         flat},
        {"sibling groups at the depth limit",
         [](int n) {
             const QString deep =
                 times("(", engine::kMaxJetNesting) + "1" + times(")", engine::kMaxJetNesting);
             return "SELECT " + (deep + "+").repeated(n / 64) + "1";
         },
         flat},
    };
}

// Seconds for one run; a refused statement counts as done.
double timeOnce(const Shape& shape, const QString& statement) {
    if (shape.clausesOnly) {
        const engine::JetTokens tokens = engine::tokenizeJetSql(statement);
        return bench::secondsOf([&] { engine::arrangeGroupingAndOrder(tokens); });
    }
    return bench::secondsOf([&] {
        try {
            engine::translateJetSql(statement);
        } catch (const engine::JetError&) {
        }
    });
}

int runsFrom(const QStringList& args) {
    const qsizetype at = args.indexOf(QStringLiteral("--runs"));
    return at >= 0 && at + 1 < args.size() ? std::max(1, args[at + 1].toInt()) : 5;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const int runs = runsFrom(app.arguments());
    out << "| statement | n | characters | median (ms) | ns per character |\n";
    out << "|---|---:|---:|---:|---:|\n";
    for (const Shape& shape : shapes()) {
        for (int n : shape.sizes) {
            const QString statement = shape.statement(n);
            std::vector<double> seconds;
            for (int r = 0; r < runs; ++r)
                seconds.push_back(timeOnce(shape, statement));
            const double median = bench::median(seconds);
            out << "| " << shape.name << " | " << n << " | " << statement.size() << " | "
                << QString::number(median * 1e3, 'f', 2) << " | "
                << QString::number(median * 1e9 / double(statement.size()), 'f', 1) << " |\n";
            out.flush();
        }
    }
    return 0;
}
