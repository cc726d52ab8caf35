#pragma once

#include <QString>
#include <QStringList>
#include <random>

namespace albumgen {

// Draws from a fixed engine with plain arithmetic, so a seed gives the same collection with
// every standard library.
class Random {
  public:
    explicit Random(quint32 seed) : engine_(seed) {}

    int below(int n) { return int(engine_() % std::uint32_t(n)); }
    int between(int low, int high) { return low + below(high - low + 1); }
    bool percent(int p) { return below(100) < p; }
    bool perMille(int p) { return below(1000) < p; }
    const QString& pick(const QStringList& list) { return list[below(int(list.size()))]; }

  private:
    std::mt19937 engine_;
};

}  // namespace albumgen
