#include "dialogs/CommandDialogs.h"

namespace commanddialogs {

namespace {
struct Entry {
    int dialogId;
    Runner run;
};

// One row per dialog template: {6002, RunEmbossDialog}, ...
constexpr Entry kDialogs[] = {
    {0, nullptr},
};
} // namespace

Runner Find(int dialogId) {
    for (const Entry& entry : kDialogs) {
        if (entry.dialogId == dialogId && dialogId != 0) {
            return entry.run;
        }
    }
    return nullptr;
}

} // namespace commanddialogs
