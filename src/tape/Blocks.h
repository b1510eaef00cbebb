#pragma once

#include "tape/Block.h"

#include <memory>
#include <string>
#include <vector>

namespace cintal {

using BlockRef = std::shared_ptr<Block>;

// The ordered, editable list of a tape's blocks. Positions count from 1.
// Blocks are handed out by reference: changing one changes the tape.
class Blocks {
public:
    // sPosition above 0 puts the block before the one at that position; 0,
    // below 0 or beyond the end appends (an empty list has no position 1).
    BlockRef Add(std::int32_t sIdTipoBloque, std::string sDescr, Bytes sBlockData,
                 double sLenghtTot, const std::string& sKey = {}, double sPosition = 0);
    // Appends a block made whole elsewhere, its kind name included.
    void Append(BlockRef block);
    // The block at that position, or nothing when there is none.
    BlockRef Item(double vntIndexKey) const;
    std::int64_t Count() const { return static_cast<std::int64_t>(list.size()); }
    // Warns for group, loop and call blocks; a position that isn't there does nothing.
    void Remove(double vntIndexKey);
    BlockRef Move(double BlockNumber, bool Up);
    std::int64_t DelBlockDupe(double chkTipoBloque);
    // Returns the number of blocks removed, which it also reports in a box.
    std::int64_t CheckRedundantBlocks();
    void MakeNewBlock(std::int32_t sIdTipoBloque, const std::string& sFileName, double& sBefore,
                      std::string& sDescr, std::int32_t sBorder, std::int32_t sAttType);

    // Iteration in list order.
    auto begin() const { return list.begin(); }
    auto end() const { return list.end(); }

    // The display name of a block kind, as Windows-1252 bytes; kinds without
    // a name show the box "otro" and give the empty text.
    static std::string BlockKindName(std::int32_t kind);

private:
    static Bytes CustomBlockData(const std::string& sFileName, const std::string& sDescr);
    static Bytes PokBlockData(const std::string& sFileName);
    static Bytes MediaBlockData(const std::string& sFileName, const std::string& sDescr);
    static Bytes TextBlockData(const std::string& sFileName);

    void RemoveAt(std::size_t index) {
        list.erase(list.begin() + static_cast<std::ptrdiff_t>(index));
    }
    // The warning that Remove gives before taking out a block of that kind.
    static void WarnRemoval(std::int32_t kind);
    // Takes out the marked blocks in one pass, keeping the order of the rest.
    void RemoveMarked(const std::vector<bool>& marked);

    std::vector<BlockRef> list;
};

} // namespace cintal
