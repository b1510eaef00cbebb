#include "widgets/IconSet.h"

namespace cintal {

void IconSet::Add(const QIcon& icon, const QString& key) {
    icons.push_back(icon);
    keys << key;
}

int IconSet::ItemIndex(const QString& key) const {
    if (key.isEmpty()) return -1;
    for (int i = 0; i < keys.size(); ++i)
        if (keys[i].compare(key, Qt::CaseInsensitive) == 0) return i;
    return -1;
}

QIcon IconSet::Icon(int index) const {
    return index >= 0 && index < Count() ? icons[static_cast<std::size_t>(index)] : QIcon();
}

QString IconSet::Key(int index) const {
    return index >= 0 && index < keys.size() ? keys[index] : QString();
}

} // namespace cintal
