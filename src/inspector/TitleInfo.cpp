#include "inspector/TitleInfo.h"

#include "catalogue/Comunes.h"
#include "catalogue/Store.h"
#include "catalogue/Titles.h"
#include "inspector/TitlePane.h"
#include "tape/Prompt.h"
#include "widgets/ComboAutoComplete.h"
#include "widgets/Grids.h"
#include "widgets/KeyFilter.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QRegularExpression>
#include <QScopedValueRollback>
#include <QVBoxLayout>

namespace cintal {

namespace {

// Years before the first home computers are typing slips.
constexpr int kFirstYear = 1950;

const QStringList kOrigins = {"Del archivo TZX",         "World of Spectrum",
                              "Spectrum Gmaes Database", "Manual",
                              "Missing In Action",       "No publicado",
                              "Missing in Snaption",     "TZX perfecto",
                              "Edición original",        "No válido/incompleto/corrupto"};

QComboBox* Editable(const char* name) {
    auto* combo = new QComboBox;
    combo->setObjectName(name);
    combo->setEditable(true);
    combo->setInsertPolicy(QComboBox::NoInsert);
    return combo;
}

} // namespace

TitleInfo::TitleInfo(Grid* titles, const IconSet* icons, QWidget* parent)
    : ModalWindow(parent), mainTitles(titles), icons(icons) {
    setObjectName("TitleInfo");
    setModal(true);
    auto* top = new QVBoxLayout(this);
    Frame1 = new QGroupBox(QStringLiteral("Información general"), this);
    Frame1->setObjectName("Frame1");
    auto* g = new QGridLayout(Frame1);
    TextName = new QLineEdit(QStringLiteral("Text1"));
    TextName->setObjectName("TextName");
    TextName->setMaxLength(50);
    ComboPub = Editable("ComboPub");
    ListYear = Editable("ListYear");
    ComboTipo = Editable("ComboTipo");
    vbalCboEx1 = new QComboBox;
    vbalCboEx1->setObjectName("vbalCboEx1");
    const char* labels[] = {"Título", "Compañía", "Año", "Tipo"};
    QWidget* boxes[] = {TextName, ComboPub, ListYear, ComboTipo};
    for (int i = 0; i < 4; ++i) {
        LabelInfo[i] = new QLabel(QString::fromUtf8(labels[i]));
        g->addWidget(LabelInfo[i], i, 0);
        g->addWidget(boxes[i], i, 1);
    }
    Estado = new QLabel(QStringLiteral("Label1"));
    Estado->setObjectName("Estado");
    g->addWidget(Estado, 4, 0);
    g->addWidget(vbalCboEx1, 4, 1);
    GridFiles = new Grid(this);
    GridFiles->setObjectName("GridFiles");
    g->addWidget(GridFiles, 5, 0, 1, 2);
    g->setColumnStretch(1, 1);
    g->setRowStretch(5, 1);
    top->addWidget(Frame1);
    resize(760, 420);

    ComboTipo->lineEdit()->setMaxLength(7);

    new KeyFilter(ComboPub->lineEdit(),
                  [this](int key) { return ComboAutoComplete(ComboPub, key, false); });
    connect(ComboPub->lineEdit(), &QLineEdit::editingFinished, this, [this] {
        if (unloading || asking || ComboPub->hasFocus()) return;
        QScopedValueRollback guard(asking, true);
        ComboPub_LostFocus();
    });
}

void TitleInfo::Form_Load() {
    TitlePane::FillPublishers(ComboPub);
    vbalCboEx1->clear();
    for (int i = 0; i < kOrigins.size(); ++i)
        vbalCboEx1->addItem(icons ? icons->Icon(i) : QIcon(), kOrigins[i]);
    TitlePane::FillYears(ListYear);
    Grids::SetupGridFiles(*GridFiles);

    const TitleRef title = TitlePane::SelectedTitle(mainTitles);
    setProperty("Tag", title.TitleId);
    TextName->setText(title.Name);
    TitlePane::ShowPublisher(ComboPub, title.Publisher, title.TitleId);
    ComboTipo->setEditText(title.Type);
    shownType = ComboTipo->currentText();
    // Every year the window stores, it shows again.
    const int year = TitlePane::YearValue(title.Year);
    if (year >= kFirstYear) {
        ListYear->setCurrentIndex(ListYear->findText(QString::number(year)));
        ListYear->setEditText(QString::number(year));
    } else if (year == 0) {
        ListYear->setCurrentIndex(0);
    }
    // Where the record came from, as the catalogue keeps it.
    const int origen = TitleOrigenInfo(title.TitleId);
    vbalCboEx1->setCurrentIndex(origen >= 0 && origen < kOrigins.size() ? origen : -1);
    Grids::FillFiles(title.TitleId, *GridFiles);
    setWindowTitle("Título: " + TextName->text());
}

void TitleInfo::ComboPub_LostFocus() {
    ComboPubTag = TitlePane::PublisherLostFocus(ComboPub);
}

bool TitleInfo::Form_Unload() {
    QScopedValueRollback guard(asking, true);
    const QString year = ListYear->currentText().trimmed();
    static const QRegularExpression fourDigits(QStringLiteral("^[0-9]{4}$"));
    if (!year.isEmpty() && (!fourDigits.match(year).hasMatch() || year.toInt() < kFirstYear)) {
        Ask("El año debe tener cuatro cifras, de 1950 en adelante",
            Comunes::kAppTitle.toStdString(), Icon::Exclamation);
        return false;
    }
    ComboPub_LostFocus();
    if (!TextName->text().isEmpty()) {
        TitleFields fields;
        fields.name = TextName->text();
        fields.idPub = ComboPubTag.toLongLong();
        fields.year = year;
        fields.origenInfo = vbalCboEx1->currentIndex();
        if (ComboTipo->currentText() != shownType) fields.type = ComboTipo->currentText();
        const int failures = Store::Failures();
        const TitleSaved saved = SaveTitleRow(property("Tag").toLongLong(), fields);
        if (saved == TitleSaved::NoRow || Store::Failures() != failures) return true;
        TitlePane::SetSelectedCell(mainTitles, "ColPublisher", ComboPub->currentText());
        TitlePane::SetSelectedCell(mainTitles, "ColPubId", ComboPubTag);
        if (!year.isEmpty()) TitlePane::SetSelectedCell(mainTitles, "ColYear", year);
        if (fields.type) TitlePane::SetSelectedCell(mainTitles, "ColType", *fields.type);
    }
    TitlePane::SetSelectedCell(mainTitles, "ColName", StoredTitleName(TextName->text()));
    return true;
}

} // namespace cintal
