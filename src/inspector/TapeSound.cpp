#include "inspector/TapeSound.h"

#include "inspector/Info.h"
#include "tape/Prompt.h"
#include "tape/TZXFunct.h"

#include <QProgressDialog>

namespace cintal {

namespace {

const char* kWavTitle = "Exportar WAV";

} // namespace

TapeSound::TapeSound(QWidget* window, Inspector& logic, Grid& list, std::function<int()> selected)
    : QObject(window), window(window), logic(logic), list(list), selected(std::move(selected)) {
    CommandWav = new QPushButton(QStringLiteral("Exportar WAV..."), window);
    CommandWav->setObjectName("CommandWav");
    CommandWav->setToolTip(QStringLiteral("Guardar el sonido de la cinta en un archivo WAV"));
    CommandPlay = new QPushButton(QStringLiteral("Reproducir"), window);
    CommandPlay->setObjectName("CommandPlay");
    CommandPlay->setToolTip(QStringLiteral(
        "Hacer sonar la cinta desde el bloque elegido, para cargarla en un Spectrum"));
    LabelTime = new QLabel(window);
    LabelTime->setObjectName("LabelTime");
    connect(CommandWav, &QPushButton::clicked, this, &TapeSound::CommandWav_Click);
    connect(CommandPlay, &QPushButton::clicked, this, &TapeSound::CommandPlay_Click);
    connect(&Player, &TapePlayer::Progress, this, &TapeSound::Played);
    connect(&Player, &TapePlayer::Finished, this, &TapeSound::Ended);
}

void TapeSound::CommandWav_Click() {
    TZXTape& tape = logic.Tape();
    if (tape.Blocks().Count() == 0) return;
    if (const std::string why = WhyCutShort(tape); !why.empty()) {
        Ask("No se puede hacer el sonido de la cinta: " + why, kWavTitle, Icon::Critical);
        return;
    }
    const std::string tapePath = logic.NamingPath();
    const QString proposed =
        QString::fromStdString(JoinPath(FolderOf(tapePath), FileNameOf(tapePath) + ".wav"));
    const QString path = ChooseSaveFile ? ChooseSaveFile(proposed) : QString();
    if (path.isEmpty()) return;
    bool replace = false;
    if (const std::string existing = ExistingFile(path.toStdString()); !existing.empty()) {
        if (Ask("Ya existe " + existing + ". ¿Desea reemplazarlo?", kWavTitle, Icon::Exclamation,
                Buttons::YesNo) != Button::Yes)
            return;
        replace = true;
    }
    // Shown only when the writing takes long enough to wait for.
    QProgressDialog progress(QStringLiteral("Guardando el sonido de la cinta..."),
                             QStringLiteral("Cancelar"), 0, 1000, window);
    progress.setWindowTitle(kWavTitle);
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(400);
    std::string reason;
    const bool written = WriteWav(
        tape.Blocks(), path.toStdString(), kWavRate, reason,
        [&](double done) {
            progress.setValue(static_cast<int>(done * 1000));
            return !progress.wasCanceled();
        },
        replace);
    progress.reset();
    if (written)
        Ask(("Sonido de la cinta guardado en " + path).toStdString(), kWavTitle, Icon::Information);
    else if (!progress.wasCanceled())
        Ask(("No se puede guardar " + path).toStdString() + ": " + reason, kWavTitle,
            Icon::Critical);
}

void TapeSound::CommandPlay_Click() {
    if (Player.Playing()) {
        Player.Stop();
        return;
    }
    const std::int64_t count = logic.Tape().Blocks().Count();
    if (count == 0) return;
    const int block = selected ? selected() : 0;
    const std::size_t first = block >= 1 && block <= count ? std::size_t(block - 1) : 0;
    const QString why = Player.Play(logic.Tape().Blocks(), first);
    if (!why.isEmpty()) {
        Ask(why.toStdString(), "Reproducir", Icon::Exclamation);
        return;
    }
    CommandPlay->setText(QStringLiteral("Parar"));
}

void TapeSound::Stop() {
    Player.Stop();
}

void TapeSound::Played(std::size_t block, std::int64_t elapsedMs, std::int64_t totalMs) {
    LabelTime->setText(TapePlayer::Clock(elapsedMs) + " / " + TapePlayer::Clock(totalMs));
    const int row = static_cast<int>(block) + 1;
    if (row == marked) return;
    Mark(marked, false);
    Mark(row, true);
    marked = row;
}

void TapeSound::Ended() {
    Mark(marked, false);
    marked = 0;
    CommandPlay->setText(QStringLiteral("Reproducir"));
    LabelTime->clear();
}

void TapeSound::Mark(int row, bool on) {
    const auto rows = logic.BlockRows();
    if (row < 1 || static_cast<std::size_t>(row) > rows.size()) return;
    // A row without its own colour keeps the last one it was given: unmarking
    // paints the list's own background back.
    Info::WriteBlockRow(list, row, rows[static_cast<std::size_t>(row - 1)],
                        on ? QColor(255, 236, 160) : list.palette().color(QPalette::Base));
}

} // namespace cintal
