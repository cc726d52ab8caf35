#include "support/jet_errors.h"

#include "engine/jet_error.h"

namespace testsupport {

int errorNumber(const std::function<void()>& action, QString* description) {
    try {
        action();
    } catch (const engine::JetError& error) {
        if (description != nullptr) {
            *description = error.description();
        }
        return error.number();
    }
    return 0;
}

}  // namespace testsupport
