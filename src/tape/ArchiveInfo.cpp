#include "tape/ArchiveInfo.h"

namespace cintal {

const ArchiveField kArchiveFields[11] = {
    {0, "iName", &ArchiveInfo::iName},           {1, "iPublisher", &ArchiveInfo::iPublisher},
    {2, "iAuthor", &ArchiveInfo::iAuthor},       {3, "iYear", &ArchiveInfo::iYear},
    {4, "iLang", &ArchiveInfo::iLang},           {5, "iType", &ArchiveInfo::iType},
    {6, "iPrice", &ArchiveInfo::iPrice},         {7, "iSchema", &ArchiveInfo::iSchema},
    {8, "iOrigin", &ArchiveInfo::iOrigin},       {9, "iRePublisher", &ArchiveInfo::iRePublisher},
    {255, "iComments", &ArchiveInfo::iComments},
};

std::string* ArchiveTextFor(ArchiveInfo& info, int id) {
    for (const auto& f : kArchiveFields)
        if (f.id == id) return &(info.*(f.field));
    return nullptr;
}

void ArchiveInfo::Clear() {
    for (const auto& f : kArchiveFields)
        (this->*(f.field)).clear();
    fOriginalScreen = false;
    for (Variant* v :
         {&fFileName, &fEmulOvr, &fExtension, &fFileSize, &fOrigin, &fMemory, &fPlayers, &fTogether,
          &fJoy, &fAY, &fMultiLoad, &fScore, &fPathIndex, &fPath, &fEstado})
        *v = std::string();
}

} // namespace cintal
