#pragma once
// What the tape inspector does, apart from showing it: one title and one of
// its files opened as a tape, the archive texts as the boxes show them, the
// block list, and the saves of the title row and of the tape with its file
// row. The inspector window, its compare twin and `cintal-cli info` all work
// through this class, so that a test can drive it without a window.

#include "tape/Content.h"
#include "tape/TZXTape.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace cintal {

class Inspector {
public:
    // The boxes of the tape pane by the kind of text they hold, in the order
    // in which they are written into the archive information.
    static constexpr std::array<int, 11> kBoxes = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 255};
    // Box texts in the boxes' own form: lines end in CR LF.
    using BoxTexts = std::map<int, QString>;

    Inspector();

    // --- The open tape
    // A new tape read from path: whatever was pending in the old one goes.
    void Open(const QString& path);
    TZXTape& Tape() { return *tape; }
    const TZXTape& Tape() const { return *tape; }
    QString Path() const { return path; }
    // "Archivo <ruta> - versión V.R".
    QString Caption() const;
    // Why the open file can't be saved as a tape, or empty when it can.
    QString SaveBlocker() const;

    // One row of the block list, positions counted in the file from 1.
    struct BlockRow {
        qint64 number;
        int id;
        QString kind;
        QString descr;
        qint64 start;
        qint64 end;
    };
    std::vector<BlockRow> BlockRows() const;
    static std::vector<BlockRow> BlockRowsOf(const TZXTape& tape);

    // --- The texts of the tape pane
    // Gives lone carriage returns of the author and comments their line
    // feed (in the fields too) and returns what each box shows.
    BoxTexts ShowArchiveInfo();
    // A key released in any box: every box goes into the fields, the author
    // and comments lose the line feeds of their pairs, and the tape is pending.
    void KeyUp(const BoxTexts& boxes);
    // Every box into the fields as they stand, without touching line ends
    // or the pending mark: what the copy arrows do after copying.
    void WriteBoxes(const BoxTexts& boxes);
    // One field, from a combo box losing the focus; a new value is pending.
    void SetField(int box, const QString& text);
    QString Field(int box) const;

    // Whether the ASCII rule lets a typed character code through.
    static bool KeyAllowed(int key, bool asciiOnly);
    // The box shown when it doesn't.
    static void TellAsciiOnly();
    // The label of a box, as the window shows it, without a final colon.
    static QString BoxLabel(int box);

    bool Pending() const { return pending; }
    void SetPending(bool on) { pending = on; }

    // --- Saving
    // What a save writes for a box: the stored bytes while the text is the
    // one that was read (line ends aside), otherwise the text with its
    // lines ended by a carriage return alone.
    std::string WrittenText(int box) const;
    // The length that a box's text takes on the tape.
    static int WrittenLength(const QString& boxText);
    // Warns about each text that is too long for its one-byte length and
    // lets the user stop; false when the save must not go on.
    bool AcceptLongTexts() const;

    // What a save of the tape left in its file row, for the file grid.
    struct TapeSaved {
        bool attempted = false; // false: refused before the engine was asked
        bool written = false;   // the file on disk was replaced
        bool rowFound = false;  // the file row existed and was updated
        QString loadSchema;     // iSchema as read back, also when empty
        QString idLang;         // the row's IdLang after the save
        QString origin;         // the row's Origin after the save
        qint64 fileSize = 0;
    };
    // "Guardar Info" after the name box went into iName: the tape is saved
    // with the version update, read back, and the file row with that key
    // takes its size, origin, language and load schema. A file that isn't a
    // tape read whole is never written, and then nothing else happens. A
    // save declined or failed keeps the tape in memory as edited, still
    // pending; the row then takes what the file on disk holds.
    // Without a key the store isn't touched: a tape saved outside the catalogue.
    TapeSaved SaveTape(std::optional<qint64> fileId);

    // --- Block commands; each change of the list is pending like a typed one.
    // True when the list shown must be rebuilt.
    bool RemoveBlock(int row);
    // Returns the row to select afterwards, or 0 when nothing changes on screen.
    int MoveBlock(int row, bool up, int rows);
    // The four add buttons by their attachment type (1 picture, 2 screen,
    // 3 instructions, 5 ZX-Edit document). Empty when the block was added,
    // otherwise the reason nothing was.
    QString AddBlock(int attType, const QString& file, int selectedRow);
    // Drops the blocks that add nothing, with the engine's report; returns how many.
    std::int64_t RemoveRedundantBlocks();

    // --- What a block holds
    // Works out again what each block holds: after any change of the list.
    void RefreshContents();
    struct BlockPreview {
        enum class View { None, Screen, Picture, Text };
        View view = View::None;
        QByteArray bytes; // a screen's 6912 bytes, or a picture's file
        QString text;     // a listing, a text or a hex view
        QString line;     // what it is, its length and its checksum
        bool extractable = false;
    };
    // What the preview shows of block number block (from 1).
    BlockPreview Preview(int block) const;
    // "<tape>-<number>.<extension>" beside the tape; empty without content.
    QString ProposedExtractPath(int block) const;
    // Writes the block's content to path, replacing a file there only when
    // told to. Empty when written, otherwise why not.
    QString ExtractBlock(int block, const QString& path, bool replace) const;
    // The first 4 KB of bytes as rows of sixteen, in hex and in ASCII.
    static QString HexView(std::string_view bytes);

private:
    void KeepStoredTexts();

    std::unique_ptr<TZXTape> tape;
    std::vector<BlockContent> contents;
    // The texts as the file held them, by box: what an untouched box writes.
    std::map<int, std::string> stored;
    QString path;
    bool pending = false;
};

// --- The catalogue pane

// The publisher id of a text typed into a publisher box: 0 for an empty text
// or the placeholder of no publisher. Asks whether to register an unknown
// publisher; on Yes text becomes the stored name and added tells the window
// to list the register again. -1 on No, or when the store failed: the title
// keeps the publisher it had.
qint64 ResolvePublisher(QString& text, bool* added = nullptr);

// The title's fields as a catalogue pane holds them. estado is -1 when the
// list has no selection, which keeps the stored value; origenInfo -1 and no
// type leave their columns alone.
struct TitleFields {
    QString name;
    qint64 idPub = 0;
    QString year;
    int estado = -1;
    int origenInfo = -1;
    std::optional<QString> type;
};

enum class TitleSaved { Saved, NoRow, Failed };
// Writes the title row: name and publisher always, the year only when there
// is one, and the source with the year; the origin of the record and the
// type whenever they are given.
TitleSaved SaveTitleRow(qint64 titleId, const TitleFields& fields);

// The origin of a title's record (OrigenInfo), or -1 when the title is gone.
int TitleOrigenInfo(qint64 titleId);
// The title's IdPub as stored, 0 when the title is gone.
qint64 TitleIdPub(qint64 titleId);

} // namespace cintal
