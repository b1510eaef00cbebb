#include "cli/InfoCommand.h"

#include "catalogue/Comunes.h"
#include "catalogue/Records.h"
#include "catalogue/Store.h"
#include "cli/ArchiveTape.h"
#include "cli/Arguments.h"
#include "cli/Commands.h"
#include "inspector/Inspector.h"
#include "tape/TZXFunct.h"

#include <QFileInfo>
#include <QSqlQuery>
#include <ostream>

namespace cintal::cli {

namespace {

// The command line's questions: Aceptar/Cancelar is a question too, and
// only --yes accepts it.
class InfoPrompt : public CliPrompt {
public:
    InfoPrompt(std::ostream& err, bool yes) : CliPrompt(err, yes), err(err), yes(yes) {}
    Button Show(const Message& message) override {
        if (message.buttons != Buttons::OkCancel) return CliPrompt::Show(message);
        err << FormatMessage(message) << " -> " << (yes ? "Aceptar" : "Cancelar") << "\n";
        return yes ? Button::Ok : Button::Cancel;
    }

private:
    std::ostream& err;
    bool yes;
};

// "\n" stands for a new line, which the tape writes as a carriage return;
// "\\" for a backslash.
QString Unescape(const std::string& utf8) {
    QString text = QString::fromStdString(utf8), out;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 1 < text.size() && (text[i + 1] == 'n' || text[i + 1] == '\\')) {
            out += text[i + 1] == 'n' ? QChar('\r') : QChar('\\');
            ++i;
        } else {
            out += text[i];
        }
    }
    return out;
}

int BoxOf(const std::string& name) {
    for (const auto& f : kArchiveFields)
        if (name == f.name) return f.id;
    return -1;
}

// "Juego.zip" of "/ruta/Juego.zip".
std::string FileNameWithExt(const std::string& path) {
    const auto slash = path.find_last_of('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

} // namespace

int InfoCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    Arguments a;
    if (const int status = Stop(a.Parse(args, InfoSpec(), out, err)); status >= 0) return status;
    const QString db = QString::fromStdString(a.Value("--db"));
    const QString file = QString::fromStdString(a.words[0]);
    const bool yes = a.Has("--yes");
    std::vector<std::pair<int, QString>> sets;
    for (const std::string& set : a.Values("--set")) {
        const auto eq = set.find('=');
        const int box = eq == std::string::npos ? -1 : BoxOf(set.substr(0, eq));
        if (box < 0) {
            err << "cintal-cli: campo desconocido en --set " << set
                << " (iName, iPublisher, iAuthor, iYear, iLang, iType, iPrice, iSchema, "
                   "iOrigin, iRePublisher, iComments)\n";
            return 2;
        }
        sets.emplace_back(box, Unescape(set.substr(eq + 1)));
    }
    InfoPrompt prompt(err, yes);
    PromptScope scope(prompt);
    // Nothing is ever written inside an archive; showing one's information
    // without --set is a tape command, answered before this.
    if (const std::string archive = ArchiveOf(a.words[0]); !archive.empty()) {
        err << "cintal-cli: El archivo está dentro de " << FileNameWithExt(archive)
            << ": no se puede modificar\n";
        return 1;
    }
    const QString path = QFileInfo(file).absoluteFilePath();
    Inspector inspector;
    inspector.Open(path);
    if (sets.empty()) {
        out << ArchiveLines(inspector.Tape().ArchiveInfo());
        return inspector.Tape().Status().Whole() ? 0 : 1;
    }

    std::optional<qint64> fileId;
    if (!db.isEmpty()) {
        QString reason;
        if (!Comunes::InitGlobals(db, &reason)) {
            err << "No se puede abrir el catálogo " << db.toStdString() << ": "
                << reason.toStdString() << "\n";
            return 2;
        }
        fileId = Records::FileRowAt(path);
        if (!fileId) return 2;
    }
    // As the window does: the boxes show the fields, the user types, the
    // key release writes them back.
    Inspector::BoxTexts boxes = inspector.ShowArchiveInfo();
    for (const auto& [box, text] : sets)
        boxes[static_cast<Box>(box)] = text;
    inspector.KeyUp(boxes);
    if (inspector.SaveBlocker().isEmpty() && !inspector.AcceptLongTexts()) {
        out << file.toStdString() << ": no se ha modificado\n";
        return 1;
    }
    const int failures = Store::Failures();
    const Inspector::TapeSaved saved = inspector.SaveTape(fileId);
    if (!saved.written) {
        out << file.toStdString() << ": no se ha modificado\n";
        return 1;
    }
    out << file.toStdString() << ": guardado, versión " << inspector.Tape().FileVersion << "."
        << inspector.Tape().FileRevision << "\n";
    return Store::Failures() != failures ? 2 : 0;
}

} // namespace cintal::cli
