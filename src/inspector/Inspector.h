#pragma once
// What the tape inspector does, apart from showing it: one title and one of
// its files opened as a tape, the archive texts as the boxes show them, the
// block list, and the saves of the title row and of the tape with its file
// row. The inspector window, its compare twin and `cintal-cli info` all work
// through this class, so that a test can drive it without a window.

#include "catalogue/Files.h"
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

// The boxes of the tape pane by the archive text each holds; the values are
// the texts' ids on the tape.
enum class Box {
    Title = 0,
    Publisher = 1,
    Author = 2,
    Year = 3,
    Language = 4,
    Type = 5,
    Price = 6,
    Protection = 7,
    Origin = 8,
    RePublisher = 9,
    Comments = 255
};

// What the four add buttons attach before the selected block; the values
// are the attachment types the engine writes.
enum class Attachment { Picture = 1, Screen = 2, Instructions = 3, ZxEdit = 5 };

class Inspector {
public:
    struct BoxSpec {
        Box box;
        // As the window shows it; the messages leave out a final colon.
        const char* label;
    };
    // In the order in which the boxes are written into the archive information.
    static const std::array<BoxSpec, 11> kBoxes;
    // Box texts in the boxes' own form: lines end in CR LF.
    using BoxTexts = std::map<Box, QString>;

    struct AttachmentSpec {
        Attachment type;
        const char* caption; // of the file dialog
        const char* filter;
        const char* descr; // the block's description, when it has one
    };
    // In the order of the buttons.
    static const std::array<AttachmentSpec, 4> kAttachments;
    static const AttachmentSpec& SpecOf(Attachment type);

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
    // Why the open tape can't be changed at all (it lies inside an archive),
    // or empty.
    QString ReadOnlyReason() const;
    // The path whose folder and name the files made from the tape take: the
    // tape's own, or for a tape inside an archive, the inner file's name in
    // the archive's folder.
    std::string NamingPath() const;

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
    void SetField(Box box, const QString& text);
    QString Field(Box box) const;

    // Whether the ASCII rule lets a typed character code through.
    static bool KeyAllowed(int key, bool asciiOnly);
    // The box shown when it doesn't.
    static void TellAsciiOnly();
    // The label of a box as the window shows it, and without a final colon.
    static const char* BoxCaption(Box box);
    static QString BoxLabel(Box box);

    bool Pending() const { return pending; }
    void SetPending(bool on) { pending = on; }

    // --- Saving
    // What a save writes for a box: the stored bytes while the text is the
    // one that was read (line ends aside), otherwise the text with its
    // lines ended by a carriage return alone.
    std::string WrittenText(Box box) const;
    // The length that a box's text takes on the tape.
    static int WrittenLength(const QString& boxText);
    // Warns about each text that is too long for its one-byte length and
    // lets the user stop; false when the save must not go on.
    bool AcceptLongTexts() const;

    // What a save of the tape did, and left in its file row for the file grid.
    struct TapeSaved {
        bool attempted = false;     // false: refused before the engine was asked
        bool written = false;       // the file on disk was replaced
        std::optional<FileRow> row; // the file row as it now stands, when updated
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
    // One of the four add buttons. Empty when the block was added,
    // otherwise the reason nothing was.
    QString AddBlock(Attachment type, const QString& file, int selectedRow);
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
    std::map<Box, std::string> stored;
    QString path;
    bool pending = false;
};

} // namespace cintal
