#include "widgets/Grid.h"

#include "platform/Ranks.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionHeader>
#include <QStyledItemDelegate>
#include <algorithm>
#include <numeric>

namespace cintal {

struct Grid::Column {
    QString key;
    QString header;
    int align = Grid::AlignDefault;
    int icon = -1;
    int width = 100;
    bool visible = true;
    bool textHidden = false;
    QString tag;
};

namespace {

// A cell's colours: whether it has its own background and foreground, and
// which. A grid uses a handful of these pairs, so that cells name theirs.
struct Colours {
    quint8 flags = 0; // 1: own background, 2: own foreground
    QRgb back = 0;
    QRgb fore = 0;
    bool operator==(const Colours&) const = default;
};

// 32 bytes: a grid of 100,000 titles holds 800,000 of them.
struct Cell {
    QString text;
    qint16 icon = -1;
    qint8 align = Grid::AlignDefault;
    quint16 colours = 0; // in the grid's list; 0 has none of its own
};

using Column = Grid::Column;

using Cells = std::vector<Cell>;

Qt::Alignment QtAlign(int code) {
    switch (code) {
    case Grid::AlignCenter:
        return Qt::AlignHCenter | Qt::AlignVCenter;
    case Grid::AlignRight:
        return Qt::AlignRight | Qt::AlignVCenter;
    default:
        return Qt::AlignLeft | Qt::AlignVCenter;
    }
}

} // namespace

class GridModel : public QAbstractTableModel {
public:
    using QAbstractTableModel::QAbstractTableModel;

    std::vector<Column> columns;
    Cells cells; // row-major, every row, shown or not
    std::vector<char> visible;
    std::vector<QVariant> payload; // each row's own, as SetRowData left it
    int rows = 0;
    // What the view was last told: the shown rows in order, and where each
    // row stands among them (-1 when hidden). While painting is off the
    // arrays run ahead of it, and the view is never handed a row it doesn't know.
    std::vector<int> shown;
    std::vector<int> viewOf;
    int publishedCols = 0;
    bool dirty = false;
    // Per column, the place of each row's text in sort order, kept while the
    // texts stand (empty when unknown): a second click costs no collation.
    std::vector<std::vector<int>> ranks;
    // Every pair of colours the cells use, the first with none.
    std::vector<Colours> palette{Colours{}};

    const Colours& ColoursOf(const Cell& cell) const { return palette[cell.colours]; }
    // The number of a pair, added when new. Rows are written with one pair
    // after another, so that the last one found is tried first.
    quint16 ColourNumber(const Colours& c) {
        if (palette[lastColours] == c) return lastColours;
        for (std::size_t i = 0; i < palette.size(); ++i)
            if (palette[i] == c) return lastColours = static_cast<quint16>(i);
        if (palette.size() > 0xFFFF) return 0;
        palette.push_back(c);
        return lastColours = static_cast<quint16>(palette.size() - 1);
    }
    quint16 lastColours = 0;
    // Gives the cell its own background and/or foreground, keeping the other.
    void Recolour(Cell& cell, std::optional<QColor> back, std::optional<QColor> fore) {
        if (!back && !fore) return;
        Colours c = ColoursOf(cell);
        if (back) {
            c.flags |= 1;
            c.back = back->rgb();
        }
        if (fore) {
            c.flags |= 2;
            c.fore = fore->rgb();
        }
        cell.colours = ColourNumber(c);
    }
    // The cell's own colour (flag 1 background, 2 foreground), invalid when it has none.
    QColor OwnColour(const Cell* cell, quint8 flag) const {
        if (!cell) return {};
        const Colours& c = ColoursOf(*cell);
        if (!(c.flags & flag)) return {};
        return QColor::fromRgb(flag == 1 ? c.back : c.fore);
    }
    const IconSet** images = nullptr;

    int Cols() const { return static_cast<int>(columns.size()); }
    Cell* At(int r, int c) {
        if (r < 0 || r >= rows || c < 0 || c >= Cols()) return nullptr;
        return &cells[static_cast<std::size_t>(r) * columns.size() + c];
    }
    const Cell* At(int r, int c) const { return const_cast<GridModel*>(this)->At(r, c); }
    int SourceRow(int viewRow) const {
        return viewRow >= 0 && viewRow < static_cast<int>(shown.size())
                   ? shown[static_cast<std::size_t>(viewRow)]
                   : -1;
    }
    int ViewRow(int row) const {
        return row >= 0 && row < static_cast<int>(viewOf.size())
                   ? viewOf[static_cast<std::size_t>(row)]
                   : -1;
    }

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(shown.size());
    }
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : publishedCols;
    }

    QVariant data(const QModelIndex& index, int role) const override {
        const Cell* cell = At(SourceRow(index.row()), index.column());
        if (!cell) return {};
        const Column& col = columns[static_cast<std::size_t>(index.column())];
        switch (role) {
        case Qt::DisplayRole:
            return col.textHidden ? QVariant() : QVariant(cell->text);
        case Qt::DecorationRole:
            if (cell->icon >= 0 && images && *images) return (*images)->Icon(cell->icon);
            return {};
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(QtAlign(cell->align >= 0 ? cell->align : col.align));
        case Qt::BackgroundRole:
            if (ColoursOf(*cell).flags & 1) return QColor::fromRgb(ColoursOf(*cell).back);
            return {};
        case Qt::ForegroundRole:
            if (ColoursOf(*cell).flags & 2) return QColor::fromRgb(ColoursOf(*cell).fore);
            return {};
        case Qt::UserRole:
            return col.textHidden;
        default:
            return {};
        }
    }

    QVariant headerData(int section, Qt::Orientation o, int role) const override {
        if (o != Qt::Horizontal || section < 0 || section >= Cols()) return {};
        const Column& col = columns[static_cast<std::size_t>(section)];
        if (role == Qt::DisplayRole) return col.header;
        if (role == Qt::TextAlignmentRole) return QVariant::fromValue(QtAlign(col.align));
        if (role == Qt::DecorationRole && col.icon >= 0 && images && *images)
            return (*images)->Icon(col.icon);
        return {};
    }

    // One reset for any number of changes: cheaper than a signal per row.
    void Reset() {
        beginResetModel();
        shown.clear();
        viewOf.assign(static_cast<std::size_t>(rows), -1);
        for (int r = 0; r < rows; ++r) {
            if (!visible[static_cast<std::size_t>(r)]) continue;
            viewOf[static_cast<std::size_t>(r)] = static_cast<int>(shown.size());
            shown.push_back(r);
        }
        publishedCols = Cols();
        dirty = false;
        endResetModel();
    }

    void CellChanged(int r, int c) {
        const int v = ViewRow(r);
        if (v < 0 || c >= publishedCols) return;
        const QModelIndex i = index(v, c);
        emit dataChanged(i, i);
    }
};

static_assert(sizeof(Cell) <= 32);

namespace {

// Draws the icon alone, centred, in columns that hide their text.
class IconDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* p, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        if (!index.data(Qt::UserRole).toBool()) {
            QStyledItemDelegate::paint(p, option, index);
            return;
        }
        QStyleOptionViewItem opt = option;
        initStyleOption(&opt, index);
        QIcon icon = qvariant_cast<QIcon>(opt.icon);
        opt.icon = QIcon();
        opt.features &= ~QStyleOptionViewItem::HasDecoration;
        QStyle* style = opt.widget ? opt.widget->style() : QApplication::style();
        style->drawControl(QStyle::CE_ItemViewItem, &opt, p, opt.widget);
        if (!icon.isNull()) {
            const int side = std::min({16, opt.rect.height() - 2, opt.rect.width() - 2});
            QRect r(0, 0, side, side);
            r.moveCenter(opt.rect.center());
            icon.paint(p, r);
        }
    }
};

} // namespace

Grid::Grid(QWidget* parent) : QTableView(parent) {
    store = new GridModel(this);
    store->images = &images;
    setModel(store);
    setItemDelegate(new IconDelegate(this));
    setSortingEnabled(false);
    setWordWrap(false);
    setShowGrid(true);
    setAlternatingRowColors(false);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setIconSize(QSize(16, 16));
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this,
            [this](int logical) { emit HeaderClicked(logical + 1); });
    // A click moves the current row before it selects it: tell the window
    // once the selection stands, and only when it names another row.
    auto changed = [this] {
        const int row = SelectedRow();
        if (row == lastSelected) return;
        lastSelected = row;
        emit SelectionChange();
    };
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this, changed);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, changed);
}

Grid::~Grid() = default;

void Grid::Publish(int keep) {
    if (!redraw) {
        store->dirty = true;
        return;
    }
    if (keep < 0) keep = SelectedRow();
    const int before = lastSelected;
    {
        // The same title stays selected: that is no change of selection.
        QSignalBlocker block(selectionModel());
        store->Reset();
        for (int c = 0; c < Columns(); ++c) {
            const Column& col = store->columns[static_cast<std::size_t>(c)];
            // A column of no width shows nothing: hidden, the last section
            // can't stretch it over the end of the row.
            setColumnHidden(c, !col.visible || col.width <= 0);
            setColumnWidth(c, OnScreenWidth(c + 1));
        }
        if (keep > 0 && ViewRow(keep) >= 0) SetSelectedRow(keep);
        lastSelected = SelectedRow();
    }
    viewport()->update();
    // A selected row that is gone or hidden takes the selection with it.
    if (before > 0 && lastSelected == 0) emit SelectionChange();
}

void Grid::AddColumn(const QString& key, const QString& header, int alignment, int icon, int width,
                     bool visible) {
    Column c;
    c.key = key;
    c.header = header;
    c.align = alignment;
    c.icon = icon;
    c.width = width;
    c.visible = visible;
    // Existing rows gain an empty cell in the new column.
    const std::size_t oldCols = store->columns.size();
    if (store->rows > 0) {
        Cells grown(static_cast<std::size_t>(store->rows) * (oldCols + 1));
        for (std::size_t r = 0; r < static_cast<std::size_t>(store->rows); ++r)
            for (std::size_t k = 0; k < oldCols; ++k)
                grown[r * (oldCols + 1) + k] = std::move(store->cells[r * oldCols + k]);
        store->cells = std::move(grown);
    }
    store->columns.push_back(c);
    store->ranks.emplace_back();
    Publish();
}

void Grid::Clear(bool removeColumns) {
    ClearSelection();
    store->rows = 0;
    store->cells.clear();
    store->visible.clear();
    store->payload.clear();
    if (removeColumns) store->columns.clear();
    store->ranks.assign(store->columns.size(), {});
    Publish();
}

int Grid::Rows() const {
    return store->rows;
}

void Grid::SetRows(int rows) {
    rows = std::max(0, rows);
    store->rows = rows;
    store->ranks.assign(store->columns.size(), {});
    store->cells.resize(static_cast<std::size_t>(rows) * store->columns.size());
    store->visible.resize(static_cast<std::size_t>(rows), 1);
    store->payload.resize(static_cast<std::size_t>(rows));
    Publish();
}

int Grid::Columns() const {
    return store->Cols();
}

int Grid::ColumnsWidth() const {
    int total = 0;
    for (int c = 1; c <= Columns(); ++c)
        if (ColumnAt(c)->visible) total += OnScreenWidth(c);
    return total;
}

int Grid::OnScreenWidth(int col) const {
    const Column* c = ColumnAt(col);
    if (!c || c->width <= 0) return 0;
    // Never narrower than the heading as the header measures it (in bold),
    // with room for the arrow of a sort where a click on it sorts.
    const QHeaderView* header = horizontalHeader();
    QStyleOptionHeader opt;
    opt.initFrom(header);
    opt.orientation = Qt::Horizontal;
    opt.section = col - 1;
    opt.text = c->header;
    QFont bold = header->font();
    bold.setBold(true);
    opt.fontMetrics = QFontMetrics(bold);
    if (c->icon >= 0 && images) opt.icon = images->Icon(c->icon);
    if (header->sectionsClickable()) opt.sortIndicator = QStyleOptionHeader::SortDown;
    const int heading =
        header->style()->sizeFromContents(QStyle::CT_HeaderSection, &opt, QSize(), header).width();
    return std::max(Pixels(c->width), heading);
}

int Grid::Pixels(int units) const {
    // Widths were laid out for a small bitmap font, where a year's four
    // digits fit in 32 units: scale them to the font in use.
    const double scale =
        std::max(1.0, (fontMetrics().horizontalAdvance(QStringLiteral("0000")) + 10) / 32.0);
    return static_cast<int>(units * scale + 0.5);
}

void Grid::SetDefaultRowHeight(int pixels) {
    // Never below what the font needs, whatever the layout asked for.
    const int needed = fontMetrics().height() + 4;
    verticalHeader()->setDefaultSectionSize(std::max(pixels, needed));
}

int Grid::DefaultRowHeight() const {
    return verticalHeader()->defaultSectionSize();
}

void Grid::SetRedraw(bool on) {
    if (on == redraw) return;
    redraw = on;
    viewport()->setUpdatesEnabled(on);
    if (on && store->dirty) Publish();
    if (on) viewport()->update();
}

void Grid::SetRowMode(bool on) {
    setSelectionBehavior(on ? QAbstractItemView::SelectRows : QAbstractItemView::SelectItems);
}

void Grid::SetImageList(const IconSet* icons) {
    images = icons;
    if (redraw) viewport()->update();
}

const Column* Grid::ColumnAt(int col) const {
    return col >= 1 && col <= Columns() ? &store->columns[static_cast<std::size_t>(col - 1)]
                                        : nullptr;
}

int Grid::ColumnIndex(const QString& key) const {
    for (int c = 1; c <= Columns(); ++c)
        if (ColumnAt(c)->key.compare(key, Qt::CaseInsensitive) == 0) return c;
    return 0;
}

QString Grid::ColumnKey(int col) const {
    return ColumnAt(col) ? ColumnAt(col)->key : QString();
}
QString Grid::ColumnHeader(int col) const {
    return ColumnAt(col) ? ColumnAt(col)->header : QString();
}
bool Grid::ColumnVisible(int col) const {
    return ColumnAt(col) && ColumnAt(col)->visible;
}
int Grid::ColumnWidth(int col) const {
    return ColumnAt(col) ? ColumnAt(col)->width : 0;
}
QString Grid::ColumnTag(int col) const {
    return ColumnAt(col) ? ColumnAt(col)->tag : QString();
}
void Grid::SetColumnTag(int col, const QString& tag) {
    if (Column* c = ColumnAt(col)) c->tag = tag;
}
void Grid::SetColumnTextHidden(int col, bool hidden) {
    if (Column* c = ColumnAt(col)) c->textHidden = hidden;
}

void Grid::Touch(int row, int col) {
    if (!redraw) {
        store->dirty = true;
        return;
    }
    if (!store->dirty) store->CellChanged(row - 1, col - 1);
}

void Grid::CellDetails(int row, int col, const QString& text, int alignment, int icon,
                       std::optional<QColor> back, std::optional<QColor> fore) {
    Cell* cell = store->At(row - 1, col - 1);
    if (!cell) return;
    std::vector<int>& ranks = store->ranks[static_cast<std::size_t>(col - 1)];
    if (!ranks.empty() && cell->text != text) ranks.clear();
    cell->text = text;
    cell->align = static_cast<qint8>(alignment);
    cell->icon = static_cast<qint16>(icon);
    store->Recolour(*cell, back, fore);
    Touch(row, col);
}

QString Grid::CellText(int row, int col) const {
    const Cell* cell = store->At(row - 1, col - 1);
    return cell ? cell->text : QString();
}

int Grid::CellIcon(int row, int col) const {
    const Cell* cell = store->At(row - 1, col - 1);
    return cell ? cell->icon : -1;
}

int Grid::CellAlignment(int row, int col) const {
    const Cell* cell = store->At(row - 1, col - 1);
    return cell ? static_cast<int>(cell->align) : static_cast<int>(AlignDefault);
}

QColor Grid::CellBackColor(int row, int col) const {
    return store->OwnColour(store->At(row - 1, col - 1), 1);
}

QColor Grid::CellForeColor(int row, int col) const {
    return store->OwnColour(store->At(row - 1, col - 1), 2);
}

void Grid::SetCellBackColor(int row, int col, const QColor& c) {
    if (Cell* cell = store->At(row - 1, col - 1)) {
        store->Recolour(*cell, c, std::nullopt);
        Touch(row, col);
    }
}

void Grid::SetCellForeColor(int row, int col, const QColor& c) {
    if (Cell* cell = store->At(row - 1, col - 1)) {
        store->Recolour(*cell, std::nullopt, c);
        Touch(row, col);
    }
}

void Grid::SetSortRanks(int col, std::vector<int> ranks) {
    if (!ColumnAt(col) || ranks.size() != static_cast<std::size_t>(store->rows)) return;
    store->ranks[static_cast<std::size_t>(col - 1)] = std::move(ranks);
}

void Grid::SetRowData(int row, QVariant data) {
    if (row >= 1 && row <= store->rows)
        store->payload[static_cast<std::size_t>(row - 1)] = std::move(data);
}

QVariant Grid::RowData(int row) const {
    return row >= 1 && row <= store->rows ? store->payload[static_cast<std::size_t>(row - 1)]
                                          : QVariant();
}

bool Grid::RowVisible(int row) const {
    return row >= 1 && row <= store->rows && store->visible[static_cast<std::size_t>(row - 1)];
}

void Grid::SetRowVisible(int row, bool visible) {
    if (row < 1 || row > store->rows) return;
    char& v = store->visible[static_cast<std::size_t>(row - 1)];
    if (static_cast<bool>(v) == visible) return;
    v = visible;
    // One reset for a whole batch: callers turn painting off around loops.
    Publish();
}

int Grid::VisibleRows() const {
    return static_cast<int>(std::count(store->visible.begin(), store->visible.end(), 1));
}

int Grid::ViewRow(int row) const {
    return store->ViewRow(row - 1);
}

int Grid::SelectedRow() const {
    const QItemSelectionModel* sel = selectionModel();
    const QModelIndex current = sel->currentIndex();
    if (current.isValid() && sel->isSelected(current)) return store->SourceRow(current.row()) + 1;
    const QModelIndexList picked = sel->selectedIndexes();
    return picked.isEmpty() ? 0 : store->SourceRow(picked.first().row()) + 1;
}

void Grid::SetSelectedRow(int row) {
    const int view = ViewRow(row);
    if (view < 0) {
        ClearSelection();
        return;
    }
    const QModelIndex i = store->index(view, 0);
    selectionModel()->setCurrentIndex(i, QItemSelectionModel::ClearAndSelect |
                                             QItemSelectionModel::Rows);
    scrollTo(i);
}

void Grid::RemoveRow(int row) {
    if (row < 1 || row > store->rows) return;
    int selected = SelectedRow();
    if (selected == row) {
        ClearSelection();
        selected = 0;
    }
    const std::size_t cols = store->columns.size();
    const auto first = store->cells.begin() + static_cast<std::ptrdiff_t>((row - 1) * cols);
    store->cells.erase(first, first + static_cast<std::ptrdiff_t>(cols));
    for (std::vector<int>& r : store->ranks)
        if (!r.empty()) r.erase(r.begin() + row - 1);
    store->visible.erase(store->visible.begin() + row - 1);
    store->payload.erase(store->payload.begin() + row - 1);
    --store->rows;
    // A title below the removed row moves up with its row.
    Publish(selected > row ? selected - 1 : selected);
}

void Grid::ClearSelection() {
    selectionModel()->clearSelection();
    selectionModel()->setCurrentIndex({}, QItemSelectionModel::NoUpdate);
}

void Grid::Sort(const SortRanker& rank) {
    std::vector<SortKey> keys;
    for (const SortKey& k : sortKeys)
        if (ColumnAt(k.col)) keys.push_back(k);
    if (keys.empty()) return;

    const std::size_t cols = store->columns.size();
    const std::size_t n = static_cast<std::size_t>(store->rows);
    std::vector<const std::vector<int>*> byKey;
    for (const SortKey& k : keys) {
        std::vector<int>& ranks = store->ranks[static_cast<std::size_t>(k.col - 1)];
        if (ranks.size() != n) {
            std::vector<QString> texts;
            texts.reserve(n);
            for (std::size_t r = 0; r < n; ++r)
                texts.push_back(store->cells[r * cols + (k.col - 1)].text);
            ranks = rank(texts);
        }
        byKey.push_back(&ranks);
    }
    // Stable passes from the last key to the first: the first key decides,
    // the next ones break its ties.
    std::vector<std::size_t> order(n);
    std::iota(order.begin(), order.end(), 0);
    for (std::size_t i = keys.size(); i-- > 0;) {
        std::vector<int> ranks(n);
        for (std::size_t at = 0; at < n; ++at)
            ranks[at] = (*byKey[i])[order[at]];
        const std::vector<std::size_t> pass = OrderByRanks(ranks, keys[i].order == SortDescending);
        std::vector<std::size_t> next(n);
        for (std::size_t at = 0; at < n; ++at)
            next[at] = order[pass[at]];
        order = std::move(next);
    }

    // The selected title moves with its row.
    const int selected = SelectedRow();
    int movedTo = 0;
    for (std::size_t to = 0; to < n && selected > 0; ++to)
        if (static_cast<int>(order[to]) + 1 == selected) movedTo = static_cast<int>(to) + 1;
    // Rows move into their places cycle by cycle, with the known ranks:
    // no second copy of the cells.
    std::vector<Cell> held(cols);
    std::vector<int> heldRanks(cols);
    auto rowAt = [&](std::size_t r) {
        return store->cells.begin() + static_cast<std::ptrdiff_t>(r * cols);
    };
    for (std::size_t i = 0; i < n; ++i) {
        if (order[i] == i) continue;
        std::move(rowAt(i), rowAt(i + 1), held.begin());
        const char heldVisible = store->visible[i];
        QVariant heldData = std::move(store->payload[i]);
        for (std::size_t c = 0; c < cols; ++c)
            heldRanks[c] = store->ranks[c].empty() ? 0 : store->ranks[c][i];
        std::size_t to = i;
        for (;;) {
            const std::size_t from = order[to];
            order[to] = to;
            if (from == i) {
                std::move(held.begin(), held.end(), rowAt(to));
                store->visible[to] = heldVisible;
                store->payload[to] = std::move(heldData);
                for (std::size_t c = 0; c < cols; ++c)
                    if (!store->ranks[c].empty()) store->ranks[c][to] = heldRanks[c];
                break;
            }
            std::move(rowAt(from), rowAt(from + 1), rowAt(to));
            store->visible[to] = store->visible[from];
            store->payload[to] = std::move(store->payload[from]);
            for (std::vector<int>& r : store->ranks)
                if (!r.empty()) r[to] = r[from];
            to = from;
        }
    }
    if (!redraw) ClearSelection();
    Publish(movedTo);
    horizontalHeader()->setSortIndicatorShown(true);
    horizontalHeader()->setSortIndicator(keys[0].col - 1, keys[0].order == SortDescending
                                                              ? Qt::DescendingOrder
                                                              : Qt::AscendingOrder);
}

void Grid::mousePressEvent(QMouseEvent* e) {
    QTableView::mousePressEvent(e);
    if (e->button() == Qt::RightButton) emit RightButton(e->globalPosition().toPoint());
}

void Grid::mouseDoubleClickEvent(QMouseEvent* e) {
    QTableView::mouseDoubleClickEvent(e);
    if (e->button() != Qt::LeftButton) return;
    const QModelIndex i = indexAt(e->position().toPoint());
    emit RowDoubleClicked(i.isValid() ? store->SourceRow(i.row()) + 1 : 0);
}

void Grid::keyPressEvent(QKeyEvent* e) {
    // Typing doesn't move the selection: only the navigation keys do.
    const QString text = e->text();
    if (!text.isEmpty() && text.at(0).isPrint() &&
        !(e->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
        e->accept();
        return;
    }
    QTableView::keyPressEvent(e);
}

} // namespace cintal
