#pragma once

#include <cstdint>
#include <string>
#include <variant>

namespace cintal {

// The variant fields carry text or numbers from the importers to the store.
using Variant = std::variant<std::monostate, std::string, double>;

// The archive information of a tape (its i fields, Windows-1252 bytes) and,
// for the importers, one file's catalogue record (its f fields).
struct ArchiveInfo {
    std::string iName;
    std::string iPublisher;
    std::string iRePublisher;
    std::string iYear;
    std::string iLang;
    std::string iPrice;
    std::string iSchema;
    std::string iOrigin;
    std::string iType;
    std::string iAuthor;
    std::string iComments;
    bool fOriginalScreen = false;
    Variant fFileName;
    Variant fEmulOvr;
    Variant fExtension;
    Variant fFileSize;
    Variant fOrigin;
    Variant fMemory;
    Variant fPlayers;
    Variant fTogether;
    Variant fJoy;
    Variant fAY;
    Variant fMultiLoad;
    Variant fScore;
    Variant fPathIndex;
    Variant fPath;
    Variant fEstado;
    Variant fCurrah;

    // Empties every field but fCurrah, which the importers keep across files.
    void Clear();
};

// Archive text ids in the order they are written, with their fields.
struct ArchiveField {
    int id;
    const char* name;
    std::string ArchiveInfo::*field;
};
extern const ArchiveField kArchiveFields[11];

// The field for a text id, or null for an id that has none.
std::string* ArchiveTextFor(ArchiveInfo& info, int id);

} // namespace cintal
