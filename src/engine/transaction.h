#pragma once

#include <QString>

struct sqlite3;

namespace engine {

class Database;

// One step of the user, one transaction: a savepoint that is rolled back unless committed.
// Nests inside an outer transaction.
class ScopedTransaction {
  public:
    explicit ScopedTransaction(sqlite3* db);
    explicit ScopedTransaction(const Database& database);
    ~ScopedTransaction();
    ScopedTransaction(const ScopedTransaction&) = delete;
    ScopedTransaction& operator=(const ScopedTransaction&) = delete;
    void commit();

  private:
    sqlite3* db_;
    QString name_;
    bool done_ = false;
};

}  // namespace engine
