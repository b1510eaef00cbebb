#include "inspector/Inspector.h"

#include "catalogue/Ask.h"
#include "catalogue/Comunes.h"
#include "catalogue/FileHashes.h"
#include "platform/Archive.h"
#include "platform/Hashes.h"
#include "platform/Spanish.h"
#include "platform/TapeAt.h"
#include "tape/Prompt.h"
#include "tape/TZXFunct.h"

#include <QFile>
#include <QFileInfo>

namespace cintal {

namespace {

// A length byte holds at most this much of an archive text.
constexpr int kMaxArchiveText = 255;

std::string* FieldOf(ArchiveInfo& info, Box box) {
    return ArchiveTextFor(info, static_cast<int>(box));
}

// Lines of the tape end in a carriage return alone; drops the line feed of
// every pair.
void DropPairedLineFeeds(std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n' && i > 0 && text[i - 1] == '\r') continue;
        out += text[i];
    }
    text.swap(out);
}

// The boxes' lines end in CR LF: every lone carriage return gets its feed.
void PairLoneCarriageReturns(std::string& text) {
    std::string out;
    out.reserve(text.size() + 8);
    for (std::size_t i = 0; i < text.size(); ++i) {
        out += text[i];
        if (text[i] == '\r' && (i + 1 == text.size() || text[i + 1] != '\n')) out += '\n';
    }
    text.swap(out);
}

} // namespace

const std::array<Inspector::BoxSpec, 11> Inspector::kBoxes = {{
    {Box::Title, "Título"},
    {Box::Publisher, "Compañía"},
    {Box::Author, "Autor"},
    {Box::Year, "Año"},
    {Box::Language, "Idioma"},
    {Box::Type, "Tipo"},
    {Box::Price, "Precio"},
    {Box::Protection, "Protección"},
    {Box::Origin, "Origin"},
    {Box::RePublisher, "Reeditado por"},
    {Box::Comments, "Comentarios:"},
}};

const std::array<Inspector::AttachmentSpec, 4> Inspector::kAttachments = {{
    {Attachment::Picture, "Añadir una imagen", "Imagen (*.jpg *.jpeg *.gif)", "Afoto"},
    {Attachment::ZxEdit, "Añadir un documento ZX-Edit", "Documento ZX-Edit (*.zed)", "ZED file"},
    {Attachment::Screen, "Añadir una pantalla", "Pantalla (*.scr)", ""},
    {Attachment::Instructions, "Añadir instrucciones", "Texto (*.txt)", ""},
}};

const Inspector::AttachmentSpec& Inspector::SpecOf(Attachment type) {
    for (const AttachmentSpec& spec : kAttachments)
        if (spec.type == type) return spec;
    return kAttachments.back();
}

Inspector::Inspector() : tape(std::make_unique<TZXTape>()) {}

void Inspector::Open(const QString& file) {
    tape = std::make_unique<TZXTape>();
    path = file;
    std::string why;
    if (!platform::ReadTapeAt(file.toStdString(), *tape, why))
        Ask(QString::fromStdString(why), Comunes::kAppTitle, Icon::Exclamation);
    KeepStoredTexts();
    pending = false;
}

void Inspector::KeepStoredTexts() {
    stored.clear();
    for (const BoxSpec& b : kBoxes)
        stored[b.box] = *FieldOf(tape->ArchiveInfo(), b.box);
}

QString Inspector::Caption() const {
    return QStringLiteral("Archivo %1 - versión %2.%3")
        .arg(QString::fromStdString(tape->FileName))
        .arg(tape->FileVersion)
        .arg(tape->FileRevision);
}

QString Inspector::ReadOnlyReason() const {
    const auto at = platform::SplitInner(path.toStdString());
    if (!at) return {};
    return "El archivo está dentro de " +
           QFileInfo(QString::fromStdString(at->archive)).fileName() + ": no se puede modificar";
}

std::string Inspector::NamingPath() const {
    const auto at = platform::SplitInner(path.toStdString());
    if (!at) return tape->FileName;
    const std::string ext = ExtensionOf(at->inner);
    return JoinPath(FolderOf(at->archive), FileNameOf(at->inner) + (ext.empty() ? "" : "." + ext));
}

QString Inspector::SaveBlocker() const {
    if (path.isEmpty()) return QStringLiteral("No hay ningún archivo abierto");
    if (const QString why = ReadOnlyReason(); !why.isEmpty()) return why;
    if (tape->SafeToSave()) return {};
    switch (tape->Status().stop) {
    case ReadStop::Missing:
        return QStringLiteral("El archivo no existe");
    case ReadStop::TooShort:
    case ReadStop::NoSignature:
        return QStringLiteral("No es una cinta TZX");
    default:
        break;
    }
    QString cause = QString::fromStdString(tape->Status().Cause());
    if (cause.isEmpty()) cause = QStringLiteral("el bloque cortado ya no es el último");
    return "La cinta no se leyó entera: " + cause;
}

std::vector<Inspector::BlockRow> Inspector::BlockRows() const {
    return BlockRowsOf(*tape);
}

std::vector<Inspector::BlockRow> Inspector::BlockRowsOf(const TZXTape& tape) {
    std::vector<BlockRow> rows;
    const Blocks& blocks = const_cast<TZXTape&>(tape).Blocks();
    rows.reserve(static_cast<std::size_t>(blocks.Count()));
    // The header takes the first ten bytes; each block starts one past the
    // end of the one before, as it will lie in the file once saved.
    qint64 position = 10, number = 1;
    for (const BlockRef& b : blocks) {
        BlockRow row{number++,
                     b->IdTipoBloque,
                     Comunes::FromTape(b->TipoBloque),
                     Comunes::FromTape(b->Descr),
                     position + 1,
                     0};
        position += static_cast<qint64>(b->LenghtTot);
        row.end = position;
        rows.push_back(std::move(row));
    }
    return rows;
}

Inspector::BoxTexts Inspector::ShowArchiveInfo() {
    ArchiveInfo& info = tape->ArchiveInfo();
    PairLoneCarriageReturns(info.iAuthor);
    PairLoneCarriageReturns(info.iComments);
    BoxTexts boxes;
    for (const BoxSpec& b : kBoxes)
        boxes[b.box] = Comunes::FromTape(*FieldOf(info, b.box));
    return boxes;
}

void Inspector::WriteBoxes(const BoxTexts& boxes) {
    ArchiveInfo& info = tape->ArchiveInfo();
    for (const BoxSpec& b : kBoxes) {
        auto it = boxes.find(b.box);
        if (it != boxes.end()) *FieldOf(info, b.box) = Comunes::ToTape(it->second);
    }
}

void Inspector::KeyUp(const BoxTexts& boxes) {
    WriteBoxes(boxes);
    ArchiveInfo& info = tape->ArchiveInfo();
    DropPairedLineFeeds(info.iAuthor);
    DropPairedLineFeeds(info.iComments);
    pending = true;
}

void Inspector::SetField(Box box, const QString& text) {
    std::string* field = FieldOf(tape->ArchiveInfo(), box);
    if (!field) return;
    std::string value = Comunes::ToTape(text);
    if (value == *field) return;
    field->swap(value);
    pending = true;
}

QString Inspector::Field(Box box) const {
    std::string* field = FieldOf(const_cast<TZXTape&>(*tape).ArchiveInfo(), box);
    return field ? Comunes::FromTape(*field) : QString();
}

bool Inspector::KeyAllowed(int key, bool asciiOnly) {
    if (key == 13 || key == 8 || key == 3 || key == 22 || key == 24) return true;
    return key >= 32 && (key <= 127 || !asciiOnly);
}

void Inspector::TellAsciiOnly() {
    Ask(QStringLiteral("El formato sólo admite caracteres ASCII."), Comunes::kAppTitle,
        Icon::Information);
}

const char* Inspector::BoxCaption(Box box) {
    for (const BoxSpec& b : kBoxes)
        if (b.box == box) return b.label;
    return "";
}

QString Inspector::BoxLabel(Box box) {
    QString label = QString::fromUtf8(BoxCaption(box));
    if (label.endsWith(QLatin1Char(':'))) label.chop(1);
    return label;
}

std::string Inspector::WrittenText(Box box) const {
    std::string text = *FieldOf(const_cast<TZXTape&>(*tape).ArchiveInfo(), box);
    DropPairedLineFeeds(text);
    const auto it = stored.find(box);
    if (it == stored.end()) return text;
    // The boxes pair the line ends, and show what they can't hold as
    // something else: neither is a change made by the user.
    for (std::string read : {it->second, Comunes::ToTape(Comunes::FromTape(it->second))}) {
        DropPairedLineFeeds(read);
        if (read == text) return it->second;
    }
    return text;
}

int Inspector::WrittenLength(const QString& boxText) {
    std::string text = Comunes::ToTape(boxText);
    DropPairedLineFeeds(text);
    return static_cast<int>(text.size());
}

bool Inspector::AcceptLongTexts() const {
    for (const BoxSpec& b : kBoxes) {
        if (static_cast<int>(WrittenText(b.box).size()) <= kMaxArchiveText) continue;
        const QString text = "El campo " + BoxLabel(b.box) +
                             " tiene más de 255 caracteres; se guardarán los 255 primeros.";
        if (Ask(text.toStdString(), Comunes::kAppTitle.toStdString(), Icon::Exclamation,
                Buttons::OkCancel) != Button::Ok)
            return false;
    }
    return true;
}

Inspector::TapeSaved Inspector::SaveTape(std::optional<qint64> fileId) {
    TapeSaved result;
    // The archive is never written: nothing to save, nothing to refuse.
    if (!ReadOnlyReason().isEmpty()) return result;
    // A file that isn't a tape read whole would be replaced by a nearly empty
    // one: the engine refuses it in its own words, and nothing else runs.
    if (!SaveBlocker().isEmpty()) {
        tape->Save(tape->FileName, true);
        return result;
    }
    result.attempted = true;
    ArchiveInfo& edited = tape->ArchiveInfo();
    for (const BoxSpec& b : kBoxes)
        *FieldOf(edited, b.box) = WrittenText(b.box);
    // The engine reads the file again when the user declines: the edits
    // are held aside so that they survive it.
    const auto editedBlocks = tape->BlocksRef();
    const auto editedInfo = tape->ArchiveInfoRef();
    result.written = tape->Save(tape->FileName, true);
    // What follows shows and stores the file as it now is. When nothing was
    // written the edits stay in memory, pending, and the file is read aside.
    TZXTape onDisk;
    if (result.written) {
        tape->ReadTape();
        KeepStoredTexts();
        pending = false;
    } else {
        tape->SetBlocks(editedBlocks);
        tape->SetArchiveInfo(editedInfo);
        onDisk.FileName = tape->FileName;
        // Read for the store only: what the read would say (a version above
        // the supported one), the user has just been asked about.
        ScriptedPrompt silent;
        PromptScope scope(silent);
        onDisk.ReadTape();
    }

    const ArchiveInfo& info = result.written ? tape->ArchiveInfo() : onDisk.ArchiveInfo();
    if (!fileId) return result;
    TapeRowValues values;
    values.fileSize = QFileInfo(path).size();
    values.origin = Comunes::FromTape(info.iOrigin).left(50);
    values.lang = Comunes::FromTape(info.iLang);
    values.schema = Comunes::FromTape(info.iSchema);
    // The bytes changed: so did the hashes, and which DAT rom the file is.
    std::string bytes, why;
    if (result.written && platform::ReadFileOrInner(path.toStdString(), bytes, why) &&
        !FileHashes::Save(*fileId,
                          platform::HashBytes(bytes.data(), static_cast<qint64>(bytes.size())),
                          FileHashes::StampOf(path)))
        return result; // the store has shown its failure
    FileRow row;
    switch (SaveTapeFileRow(*fileId, values, row)) {
    case FileRowSaved::Saved:
        result.row = std::move(row);
        break;
    case FileRowSaved::NoRow:
        Ask(QStringLiteral("El archivo ya no está en el catálogo"), Comunes::kAppTitle,
            Icon::Information);
        break;
    case FileRowSaved::Failed: // the store has shown its failure
        break;
    }
    return result;
}

bool Inspector::RemoveBlock(int row) {
    Blocks& blocks = tape->Blocks();
    if (blocks.Count() < 1 || row < 1) return false;
    const auto before = blocks.Count();
    blocks.Remove(row);
    if (blocks.Count() != before) pending = true;
    return true;
}

int Inspector::MoveBlock(int row, bool up, int rows) {
    if (tape->Blocks().Move(row, up)) pending = true;
    if (up) return row > 1 ? row - 1 : 0;
    return row < rows ? row + 1 : 0;
}

QString Inspector::AddBlock(Attachment type, const QString& file, int selectedRow) {
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly))
        return "No se puede añadir " + file + ": no se puede leer el archivo";
    source.close();
    // The block is built only for these extensions, written in lower case.
    const QString ext = QString::fromStdString(ExtensionOf(file.toStdString()));
    static const QStringList taken = {"gif", "jpg", "jpeg", "scr", "zed", "txt"};
    if (!taken.contains(ext))
        return "No se puede añadir " + file +
               ": sólo se admiten archivos gif, jpg, jpeg, scr, zed y txt, con la extensión en "
               "minúsculas";
    double before = selectedRow;
    std::string descr = SpecOf(type).descr;
    tape->Blocks().MakeNewBlock(53, file.toStdString(), before, descr, 0, static_cast<int>(type));
    pending = true;
    return {};
}

std::int64_t Inspector::RemoveRedundantBlocks() {
    const std::int64_t removed = tape->Blocks().CheckRedundantBlocks();
    if (removed > 0) pending = true;
    return removed;
}

void Inspector::RefreshContents() {
    contents = ContentOf(tape->Blocks());
}

QString Inspector::HexView(std::string_view bytes) {
    constexpr std::size_t kShown = 4096;
    QString out;
    const std::size_t n = std::min(bytes.size(), kShown);
    for (std::size_t row = 0; row < n; row += 16) {
        QString hex, ascii;
        for (std::size_t i = row; i < row + 16; ++i) {
            if (i < n) {
                const auto c = static_cast<unsigned char>(bytes[i]);
                hex += QStringLiteral("%1 ").arg(c, 2, 16, QLatin1Char('0')).toUpper();
                ascii += c >= 32 && c < 127 ? QChar(c) : QChar('.');
            } else {
                hex += QStringLiteral("   ");
            }
        }
        out += QStringLiteral("%1  %2 %3\n").arg(row, 4, 16, QLatin1Char('0')).arg(hex, ascii);
    }
    if (bytes.size() > kShown)
        out += QStringLiteral("... %1 bytes más\n").arg(Number(bytes.size() - kShown));
    return out;
}

Inspector::BlockPreview Inspector::Preview(int block) const {
    BlockPreview preview;
    const BlockRef b = tape->Blocks().Item(block);
    if (!b || block < 1 || static_cast<std::size_t>(block) > contents.size()) return preview;
    const BlockContent& c = contents[static_cast<std::size_t>(block - 1)];
    if (c.kind == ContentKind::None) return preview;
    const std::string_view bytes = ContentBytes(*b, c);
    preview.extractable = true;
    preview.line =
        QString::fromStdString(ContentKindName(c.kind)) + ", " + Number(bytes.size()) + " bytes";
    if (c.checksum != Checksum::None)
        preview.line += ", suma " + QString::fromStdString(ChecksumText(c.checksum));
    switch (c.kind) {
    case ContentKind::Screen:
        preview.view = BlockPreview::View::Screen;
        preview.bytes = QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size()));
        break;
    case ContentKind::Picture:
        preview.view = BlockPreview::View::Picture;
        preview.bytes = QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size()));
        break;
    case ContentKind::Program:
        preview.view = BlockPreview::View::Text;
        // The listing is ASCII by construction: escapes stand for the rest.
        preview.text = QString::fromLatin1(ListingOf(*b, c));
        break;
    case ContentKind::Text:
        preview.view = BlockPreview::View::Text;
        preview.text = Comunes::FromTape(std::string(bytes)).replace('\r', '\n');
        break;
    default:
        preview.view = BlockPreview::View::Text;
        preview.text = HexView(bytes);
        break;
    }
    return preview;
}

QString Inspector::ProposedExtractPath(int block) const {
    if (block < 1 || static_cast<std::size_t>(block) > contents.size()) return {};
    const BlockContent& c = contents[static_cast<std::size_t>(block - 1)];
    if (c.kind == ContentKind::None) return {};
    return QString::fromStdString(ProposedName(NamingPath(), block, c.extension));
}

QString Inspector::ExtractBlock(int block, const QString& target, bool replace) const {
    const BlockRef b = tape->Blocks().Item(block);
    if (!b || block < 1 || static_cast<std::size_t>(block) > contents.size())
        return QStringLiteral("el bloque no existe");
    const auto file = Extract(*b, contents[static_cast<std::size_t>(block - 1)]);
    if (!file) return QStringLiteral("el bloque no tiene contenido que guardar");
    std::string reason;
    if (!WriteContentFile(target.toStdString(), file->bytes, replace, reason))
        return QString::fromStdString(reason);
    return {};
}

} // namespace cintal
