#pragma once

#include <QIcon>

#include <memory>
#include <vector>

/// Icons shared by the trees, lists and combos of one window; entries refer to them by index. It can grow
/// while controls show it (an add-in brings its own icon when its source is first listed).
class KorImageList {
public:
    /// Appends an icon and returns its index, which never changes.
    int append(QIcon icon) {
        m_icons.push_back(std::move(icon));
        return count() - 1;
    }

    int count() const { return static_cast<int>(m_icons.size()); }

    /// The icon at `index`, or an empty icon for an index that is not there (-1 stands for "no icon").
    QIcon at(int index) const {
        return index >= 0 && index < count() ? m_icons[static_cast<std::size_t>(index)] : QIcon();
    }

private:
    std::vector<QIcon> m_icons;
};

using KorImageListPtr = std::shared_ptr<KorImageList>;
