#include "app/Accelerator.h"

#include <QString>

QList<QKeySequence> Accelerator::Sequences() const {
    QList<QKeySequence> keys;
    if (standard != QKeySequence::UnknownKey) {
        keys = QKeySequence::keyBindings(standard);
    }
    if (text != nullptr) {
        for (const QKeySequence& key : QKeySequence::listFromString(QString::fromUtf8(text))) {
            if (!key.isEmpty() && !keys.contains(key)) {
                keys.append(key);
            }
        }
    }
    return keys;
}
