#include "platform/Grid.h"

#include "catalogue/Collate.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QSortFilterProxyModel>
#include <QStyledItemDelegate>
#include <algorithm>
#include <numeric>

namespace cintal {

namespace {

struct Cell {
    QString text;
    qint16 icon = -1;
    qint8 align = Grid::AlignDefault;
    quint8 flags = 0; // 1: own background, 2: own foreground
    QRgb back = 0;
    QRgb fore = 0;
};

struct Column {
    QString key;
    QString header;
    int align = Grid::AlignDefault;
    int icon = -1;
    int width = 100;
    bool visible = true;
    bool textHidden = false;
    QString tag;
};

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
    std::vector<Cell> cells; // row-major
    std::vector<char> visible;
    int rows = 0;
    // What the view was last told: while painting is off the arrays may run
    // ahead of it, and the view must never be handed a row it doesn't know.
    int publishedRows = 0;
    int publishedCols = 0;
    bool structureDirty = false;
    bool dataDirty = false;
    const IconSet** images = nullptr;

    int Cols() const { return static_cast<int>(columns.size()); }
    Cell* At(int r, int c) {
        if (r < 0 || r >= rows || c < 0 || c >= Cols()) return nullptr;
        return &cells[static_cast<std::size_t>(r) * columns.size() + c];
    }
    const Cell* At(int r, int c) const { return const_cast<GridModel*>(this)->At(r, c); }

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : publishedRows;
    }
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : publishedCols;
    }

    QVariant data(const QModelIndex& index, int role) const override {
        const Cell* cell = At(index.row(), index.column());
        if (!cell) return {};
        const Column& col = columns[static_cast<std::size_t>(index.column())];
        switch (role) {
        case Qt::DisplayRole:
            return col.textHidden ? QVariant() : QVariant(cell->text);
        case Qt::ToolTipRole:
            return col.textHidden ? QVariant() : QVariant();
        case Qt::DecorationRole:
            if (cell->icon >= 0 && images && *images) return (*images)->Icon(cell->icon);
            return {};
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(QtAlign(cell->align >= 0 ? cell->align : col.align));
        case Qt::BackgroundRole:
            if (cell->flags & 1) return QColor::fromRgb(cell->back);
            return {};
        case Qt::ForegroundRole:
            if (cell->flags & 2) return QColor::fromRgb(cell->fore);
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
        if (role == Qt::DecorationRole && col.icon >= 0 && images && *images)
            return (*images)->Icon(col.icon);
        return {};
    }

    void RemoveRowNow(int r) {
        const std::size_t cols = columns.size();
        const auto first = cells.begin() + static_cast<std::ptrdiff_t>(r * cols);
        const bool shown = r < publishedRows && !structureDirty;
        if (shown) beginRemoveRows({}, r, r);
        cells.erase(first, first + static_cast<std::ptrdiff_t>(cols));
        visible.erase(visible.begin() + r);
        --rows;
        if (shown) {
            --publishedRows;
            endRemoveRows();
        } else {
            structureDirty = true;
        }
    }

    void Publish() {
        if (structureDirty) {
            beginResetModel();
            publishedRows = rows;
            publishedCols = Cols();
            structureDirty = false;
            dataDirty = false;
            endResetModel();
        } else if (dataDirty && rows > 0 && Cols() > 0) {
            dataDirty = false;
            emit dataChanged(index(0, 0), index(rows - 1, Cols() - 1));
        }
    }
};

class GridFilter : public QSortFilterProxyModel {
public:
    using QSortFilterProxyModel::QSortFilterProxyModel;
    GridModel* grid = nullptr;
    bool dirty = false;

    void Refilter() {
        dirty = false;
        invalidateFilter();
    }

protected:
    bool filterAcceptsRow(int row, const QModelIndex&) const override {
        return row < 0 || row >= static_cast<int>(grid->visible.size()) || grid->visible[row];
    }
};

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
    filter = new GridFilter(this);
    filter->grid = store;
    filter->setSourceModel(store);
    filter->setDynamicSortFilter(false);
    setModel(filter);
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
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex&, const QModelIndex&) { emit SelectionChange(); });
}

Grid::~Grid() = default;

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
        std::vector<Cell> grown(static_cast<std::size_t>(store->rows) * (oldCols + 1));
        for (int r = 0; r < store->rows; ++r)
            for (std::size_t k = 0; k < oldCols; ++k)
                grown[r * (oldCols + 1) + k] = std::move(store->cells[r * oldCols + k]);
        store->cells = std::move(grown);
    }
    store->columns.push_back(c);
    store->structureDirty = true;
    if (redraw) store->Publish();
    const int logical = Columns() - 1;
    if (logical < store->publishedCols) {
        setColumnWidth(logical, Pixels(width));
        setColumnHidden(logical, !visible);
    }
}

void Grid::Clear(bool removeColumns) {
    store->rows = 0;
    store->cells.clear();
    store->visible.clear();
    if (removeColumns) store->columns.clear();
    store->structureDirty = true;
    if (redraw) store->Publish();
    if (redraw) filter->Refilter();
}

int Grid::Rows() const {
    return store->rows;
}

void Grid::SetRows(int rows) {
    rows = std::max(0, rows);
    store->rows = rows;
    store->cells.resize(static_cast<std::size_t>(rows) * store->columns.size());
    store->visible.resize(static_cast<std::size_t>(rows), 1);
    store->structureDirty = true;
    if (redraw) {
        store->Publish();
        filter->Refilter();
    }
}

int Grid::Columns() const {
    return store->Cols();
}

int Grid::ColumnsWidth() const {
    int total = 0;
    for (const Column& c : store->columns)
        if (c.visible) total += Pixels(c.width);
    return total;
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
    if (!on) {
        viewport()->setUpdatesEnabled(false);
        return;
    }
    const bool structural = store->structureDirty;
    store->Publish();
    if (structural) {
        for (int c = 0; c < Columns(); ++c) {
            setColumnWidth(c, Pixels(store->columns[static_cast<std::size_t>(c)].width));
            setColumnHidden(c, !store->columns[static_cast<std::size_t>(c)].visible);
        }
    }
    if (structural || filter->dirty) filter->Refilter();
    viewport()->setUpdatesEnabled(true);
    viewport()->update();
}

void Grid::SetRowMode(bool on) {
    setSelectionBehavior(on ? QAbstractItemView::SelectRows : QAbstractItemView::SelectItems);
}

void Grid::SetImageList(const IconSet* icons) {
    images = icons;
    if (redraw) viewport()->update();
}

int Grid::ColumnIndex(const QString& key) const {
    for (int c = 0; c < Columns(); ++c)
        if (store->columns[static_cast<std::size_t>(c)].key.compare(key, Qt::CaseInsensitive) == 0)
            return c + 1;
    return 0;
}

#define GRID_COLUMN(col) store->columns[static_cast<std::size_t>((col)-1)]
#define GRID_VALID_COL(col) ((col) >= 1 && (col) <= Columns())

QString Grid::ColumnKey(int col) const {
    return GRID_VALID_COL(col) ? GRID_COLUMN(col).key : QString();
}
QString Grid::ColumnHeader(int col) const {
    return GRID_VALID_COL(col) ? GRID_COLUMN(col).header : QString();
}
bool Grid::ColumnVisible(int col) const {
    return GRID_VALID_COL(col) && GRID_COLUMN(col).visible;
}
int Grid::ColumnWidth(int col) const {
    return GRID_VALID_COL(col) ? GRID_COLUMN(col).width : 0;
}
QString Grid::ColumnTag(int col) const {
    return GRID_VALID_COL(col) ? GRID_COLUMN(col).tag : QString();
}
void Grid::SetColumnTag(int col, const QString& tag) {
    if (GRID_VALID_COL(col)) GRID_COLUMN(col).tag = tag;
}
void Grid::SetColumnTextHidden(int col, bool hidden) {
    if (GRID_VALID_COL(col)) GRID_COLUMN(col).textHidden = hidden;
}

void Grid::Touch(int row, int col) {
    if (!redraw) {
        store->dataDirty = true;
        return;
    }
    if (row - 1 < store->publishedRows && col - 1 < store->publishedCols) {
        QModelIndex i = store->index(row - 1, col - 1);
        emit store->dataChanged(i, i);
    }
}

void Grid::CellDetails(int row, int col, const QString& text, int alignment, int icon,
                       std::optional<QColor> back, std::optional<QColor> fore) {
    Cell* cell = store->At(row - 1, col - 1);
    if (!cell) return;
    cell->text = text;
    cell->align = static_cast<qint8>(alignment);
    cell->icon = static_cast<qint16>(icon);
    if (back) {
        cell->flags |= 1;
        cell->back = back->rgb();
    }
    if (fore) {
        cell->flags |= 2;
        cell->fore = fore->rgb();
    }
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
    const Cell* cell = store->At(row - 1, col - 1);
    return cell && (cell->flags & 1) ? QColor::fromRgb(cell->back) : QColor();
}

QColor Grid::CellForeColor(int row, int col) const {
    const Cell* cell = store->At(row - 1, col - 1);
    return cell && (cell->flags & 2) ? QColor::fromRgb(cell->fore) : QColor();
}

void Grid::SetCellBackColor(int row, int col, const QColor& c) {
    if (Cell* cell = store->At(row - 1, col - 1)) {
        cell->flags |= 1;
        cell->back = c.rgb();
        Touch(row, col);
    }
}

void Grid::SetCellForeColor(int row, int col, const QColor& c) {
    if (Cell* cell = store->At(row - 1, col - 1)) {
        cell->flags |= 2;
        cell->fore = c.rgb();
        Touch(row, col);
    }
}

bool Grid::RowVisible(int row) const {
    return row >= 1 && row <= store->rows && store->visible[static_cast<std::size_t>(row - 1)];
}

void Grid::SetRowVisible(int row, bool visible) {
    if (row < 1 || row > store->rows) return;
    char& v = store->visible[static_cast<std::size_t>(row - 1)];
    if (static_cast<bool>(v) == visible) return;
    v = visible;
    // One refilter for a whole batch: callers turn painting off around loops.
    filter->dirty = true;
    if (redraw) filter->Refilter();
}

int Grid::VisibleRows() const {
    return static_cast<int>(std::count(store->visible.begin(), store->visible.end(), 1));
}

int Grid::ViewRow(int row) const {
    if (row < 1 || row > store->publishedRows) return -1;
    return filter->mapFromSource(store->index(row - 1, 0)).row();
}

int Grid::SelectedRow() const {
    const QModelIndex current = selectionModel()->currentIndex();
    if (!current.isValid() || !selectionModel()->isSelected(current)) {
        const QModelIndexList rows = selectionModel()->selectedRows();
        if (rows.isEmpty()) return 0;
        return filter->mapToSource(rows.first()).row() + 1;
    }
    return filter->mapToSource(current).row() + 1;
}

void Grid::SetSelectedRow(int row) {
    const int view = ViewRow(row);
    if (view < 0) {
        ClearSelection();
        return;
    }
    const QModelIndex i = filter->index(view, 0);
    selectionModel()->setCurrentIndex(i, QItemSelectionModel::ClearAndSelect |
                                             QItemSelectionModel::Rows);
    scrollTo(i);
}

void Grid::RemoveRow(int row) {
    if (row < 1 || row > store->rows) return;
    if (!redraw) store->structureDirty = true;
    store->RemoveRowNow(row - 1);
}

void Grid::ClearSelection() {
    selectionModel()->clearSelection();
    selectionModel()->setCurrentIndex({}, QItemSelectionModel::NoUpdate);
}

void Grid::Sort() {
    std::vector<SortKey> keys;
    for (const SortKey& k : sortKeys)
        if (GRID_VALID_COL(k.col)) keys.push_back(k);
    if (keys.empty() || store->rows < 2) return;

    const QCollator collator = TextCollator();
    const std::size_t cols = store->columns.size();
    const int n = store->rows;
    std::vector<std::vector<QCollatorSortKey>> sortKeysByColumn;
    for (const SortKey& k : keys) {
        std::vector<QString> texts;
        texts.reserve(static_cast<std::size_t>(n));
        for (int r = 0; r < n; ++r)
            texts.push_back(store->cells[r * cols + (k.col - 1)].text);
        sortKeysByColumn.push_back(SortKeys(collator, texts));
    }
    std::vector<int> order(static_cast<std::size_t>(n));
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
        for (std::size_t i = 0; i < keys.size(); ++i) {
            int c = sortKeysByColumn[i][static_cast<std::size_t>(a)].compare(
                sortKeysByColumn[i][static_cast<std::size_t>(b)]);
            if (c != 0) return keys[i].order == SortDescending ? c > 0 : c < 0;
        }
        return false;
    });

    const int selected = SelectedRow();
    std::vector<Cell> cells(store->cells.size());
    std::vector<char> visible(store->visible.size());
    int newSelected = 0;
    for (int to = 0; to < n; ++to) {
        const int from = order[static_cast<std::size_t>(to)];
        std::move(store->cells.begin() + static_cast<std::ptrdiff_t>(from * cols),
                  store->cells.begin() + static_cast<std::ptrdiff_t>((from + 1) * cols),
                  cells.begin() + static_cast<std::ptrdiff_t>(to * cols));
        visible[static_cast<std::size_t>(to)] = store->visible[static_cast<std::size_t>(from)];
        if (from + 1 == selected) newSelected = to + 1;
    }
    store->cells = std::move(cells);
    store->visible = std::move(visible);
    store->structureDirty = true;
    if (redraw) {
        store->Publish();
        filter->Refilter();
        for (int c = 0; c < Columns(); ++c) {
            setColumnWidth(c, Pixels(store->columns[static_cast<std::size_t>(c)].width));
            setColumnHidden(c, !store->columns[static_cast<std::size_t>(c)].visible);
        }
        if (newSelected) {
            // Keep the user on the title he had, without a selection event.
            QSignalBlocker block(selectionModel());
            SetSelectedRow(newSelected);
        }
    }
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
    emit RowDoubleClicked(i.isValid() ? filter->mapToSource(i).row() + 1 : 0);
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
