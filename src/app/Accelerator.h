#pragma once

#include <QKeySequence>
#include <QList>
#include <cstddef>

// The keys of a command: one of the platform's standard keys (whose bindings
// the desktop decides), fixed key sequences ("Ctrl+0", several separated by
// "; "), both, or none.
struct Accelerator {
    Accelerator(std::nullptr_t = nullptr) {}
    Accelerator(const char* keys) : text(keys) {}
    Accelerator(QKeySequence::StandardKey key, const char* moreKeys = nullptr) : text(moreKeys), standard(key) {}

    // Every sequence, the standard bindings first, without repeats.
    QList<QKeySequence> Sequences() const;

    const char* text = nullptr;
    QKeySequence::StandardKey standard = QKeySequence::UnknownKey;
};
