#pragma once
// The pictures Cintal draws for itself: nothing is taken from elsewhere.

#include "widgets/IconSet.h"

#include <QIcon>

namespace cintal::Pictures {

// The 13 pictures of the source column, one for each Estado value first.
IconSet ImageListFrom();
// The icons of the file grid, by key: formats, memory, players, languages,
// yes and no, and origins.
IconSet FormatIcon();
// The program's icon: a cassette.
QIcon AppIcon();

// The pictures of the main window's buttons, by the button's name.
// The inspector's: the copy arrows between its panes, the block moves, the
// tape's save and the block's removal.
enum class Tool {
    Search,
    Modify,
    Reorder,
    Options,
    Empty,
    Compare,
    Duplicates,
    Identify,
    ImportWeb,
    ImportFrom,
    CopyToCatalogue,
    CopyToTape,
    BlockUp,
    BlockDown,
    SaveTape,
    DeleteBlock
};
QIcon ToolPicture(Tool tool);

} // namespace cintal::Pictures
