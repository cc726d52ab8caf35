#pragma once

#include <QString>
#include <QStringList>

namespace bench {

// Runs in a child process of its own, so that its peak memory belongs to one size only.
// Connects the album file and builds the source table `runs` times through the store, then once
// more step by step with a timer per step. Prints "key value" lines for the parent.
int measureInProcess(const QString& albumFile, int runs);

}  // namespace bench
