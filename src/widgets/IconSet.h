#pragma once
// Images by position and by key, for the icons of grid cells and lists.

#include <QIcon>
#include <QString>
#include <QStringList>
#include <vector>

namespace cintal {

class IconSet {
public:
    void Add(const QIcon& icon, const QString& key = {});
    // The position of the image with that key (case ignored), or -1.
    int ItemIndex(const QString& key) const;
    bool KeyExists(const QString& key) const { return ItemIndex(key) >= 0; }
    QIcon Icon(int index) const;
    QString Key(int index) const;
    int Count() const { return static_cast<int>(icons.size()); }

private:
    std::vector<QIcon> icons;
    QStringList keys;
};

} // namespace cintal
