#include "tape/Compare.h"

#include "tape/ArchiveInfo.h"
#include "tape/TZXTape.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>
#include <limits>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace cintal {

namespace {

using Symbols = std::vector<std::uint32_t>;
using Pairs = std::vector<std::pair<std::size_t, std::size_t>>;

// Myers' difference of two symbol strings in linear space: marks the symbols
// of each side that stay out of one longest common subsequence.
class Differ {
public:
    Differ(const Symbols& a, const Symbols& b, std::vector<char>& offA, std::vector<char>& offB)
        : a(a), b(b), offA(offA), offB(offB), forward(a.size() + b.size() + 3),
          backward(forward.size()) {}

    void Run() { Compare(0, Index(a.size()), 0, Index(b.size())); }

private:
    using Index = std::ptrdiff_t;
    static constexpr Index kNone = -1;

    // Each half has at most half the edits of the whole (rounded up), so the
    // recursion is no deeper than the logarithm of the edits.
    void Compare(Index x0, Index x1, Index y0, Index y1) {
        while (x0 < x1 && y0 < y1 && a[x0] == b[y0])
            ++x0, ++y0;
        while (x0 < x1 && y0 < y1 && a[x1 - 1] == b[y1 - 1])
            --x1, --y1;
        if (x0 == x1 || y0 == y1) {
            std::fill(offA.begin() + x0, offA.begin() + x1, 1);
            std::fill(offB.begin() + y0, offB.begin() + y1, 1);
            return;
        }
        const auto [x, y] = Split(x0, x1, y0, y1);
        Compare(x0, x, y0, y);
        Compare(x, x1, y, y1);
    }

    // A point where some shortest edit path crosses the middle snake. The
    // paths from the start (x and y counted from x0, y0) and from the end (u
    // and v counted back from x1, y1) grow one edit at a time; a diagonal k
    // holds the furthest point that d edits reach on it, and a point is only
    // taken from a neighbour when the step stays inside the grid.
    std::pair<Index, Index> Split(Index x0, Index x1, Index y0, Index y1) {
        const Index n = x1 - x0, m = y1 - y0, delta = n - m;
        const bool odd = (delta & 1) != 0;
        Index* fwd = forward.data() + m + 1;      // on diagonal x - y
        Index* bwd = backward.data() + m + 1;     // on diagonal u - v
        Index flo = 1, fhi = 0, blo = 1, bhi = 0; // the diagonals of the last round
        auto reach = [&](Index* v, Index lo, Index hi, Index k) {
            Index x = kNone;
            if (k - 1 >= lo && k - 1 <= hi && v[k - 1] != kNone && v[k - 1] < n) x = v[k - 1] + 1;
            if (k + 1 >= lo && k + 1 <= hi && v[k + 1] != kNone && v[k + 1] - (k + 1) < m)
                x = std::max(x, v[k + 1]);
            return x;
        };
        for (Index d = 0; d <= n + m; ++d) {
            Index lo = std::max(-d, -m), hi = std::min(d, n);
            if ((lo + d) & 1) ++lo;
            if ((hi + d) & 1) --hi;

            for (Index k = lo; k <= hi; k += 2) {
                Index x = d == 0 ? 0 : reach(fwd, flo, fhi, k);
                fwd[k] = x;
                if (x == kNone) continue;
                Index y = x - k;
                while (x < n && y < m && a[x0 + x] == b[y0 + y])
                    ++x, ++y;
                fwd[k] = x;
                const Index kb = delta - k;
                if (odd && kb >= blo && kb <= bhi && bwd[kb] != kNone && x + bwd[kb] >= n)
                    return {x0 + x, y0 + y};
            }
            flo = lo, fhi = hi;

            for (Index k = lo; k <= hi; k += 2) {
                Index u = d == 0 ? 0 : reach(bwd, blo, bhi, k);
                bwd[k] = u;
                if (u == kNone) continue;
                Index v = u - k;
                while (u < n && v < m && a[x1 - 1 - u] == b[y1 - 1 - v])
                    ++u, ++v;
                bwd[k] = u;
                const Index kf = delta - k;
                if (!odd && kf >= flo && kf <= fhi && fwd[kf] != kNone && fwd[kf] + u >= n)
                    return {x1 - u, y1 - v};
            }
            blo = lo, bhi = hi;
        }
        // Not reached: the paths meet within (n + m) / 2 rounds. Should they
        // not, everything here counts as different, which still ends.
        return {x1, y0};
    }

    const Symbols& a;
    const Symbols& b;
    std::vector<char>& offA;
    std::vector<char>& offB;
    std::vector<Index> forward, backward;
};

// The index pairs of one longest common subsequence of a and b, in order.
// Symbols are below `symbols`.
Pairs CommonSubsequence(const Symbols& a, const Symbols& b, std::size_t symbols) {
    // A symbol found on one side only can't be matched: it stays out of the
    // search, which so shrinks to what both sides share.
    std::vector<char> inA(symbols), inB(symbols);
    for (auto s : a)
        inA[s] = 1;
    for (auto s : b)
        inB[s] = 1;
    Symbols sa, sb;
    std::vector<std::size_t> ia, ib;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (inB[a[i]]) sa.push_back(a[i]), ia.push_back(i);
    for (std::size_t j = 0; j < b.size(); ++j)
        if (inA[b[j]]) sb.push_back(b[j]), ib.push_back(j);

    std::vector<char> offA(sa.size()), offB(sb.size());
    Differ(sa, sb, offA, offB).Run();
    Pairs out;
    std::size_t j = 0;
    for (std::size_t i = 0; i < sa.size(); ++i) {
        if (offA[i]) continue;
        while (offB[j])
            ++j;
        out.emplace_back(ia[i], ib[j++]);
    }
    return out;
}

bool LeftOut(const Block& b) {
    return b.IdTipoBloque == 0x32 || b.IdTipoBloque == 0x5A;
}

bool SameBlock(const Block& x, const Block& y) {
    return x.IdTipoBloque == y.IdTipoBloque && x.Data() == y.Data();
}

// A 64-bit hash of a block's bytes, four lanes of eight bytes at a time with
// the rounds of xxHash64: several times faster than the library's hash of a
// string, which matters when two tapes of ten megabytes are hashed whole.
std::uint64_t HashOf(std::string_view s) {
    constexpr std::uint64_t p1 = 0x9E3779B185EBCA87u, p2 = 0xC2B2AE3D27D4EB4Fu,
                            p3 = 0x165667B19E3779F9u, p4 = 0x85EBCA77C2B2AE63u,
                            p5 = 0x27D4EB2F165667C5u;
    auto round = [&](std::uint64_t acc, std::uint64_t v) {
        return std::rotl(acc + v * p2, 31) * p1;
    };
    auto load = [](const char* at) {
        std::uint64_t v;
        std::memcpy(&v, at, sizeof v);
        return v;
    };
    const char* at = s.data();
    const char* const end = at + s.size();
    std::uint64_t h = p5;
    if (s.size() >= 32) {
        std::uint64_t v1 = p1 + p2, v2 = p2, v3 = 0, v4 = 0 - p1;
        for (; end - at >= 32; at += 32) {
            v1 = round(v1, load(at));
            v2 = round(v2, load(at + 8));
            v3 = round(v3, load(at + 16));
            v4 = round(v4, load(at + 24));
        }
        h = std::rotl(v1, 1) + std::rotl(v2, 7) + std::rotl(v3, 12) + std::rotl(v4, 18);
        for (std::uint64_t v : {v1, v2, v3, v4})
            h = (h ^ round(0, v)) * p1 + p4;
    }
    h += s.size();
    for (; end - at >= 8; at += 8)
        h = std::rotl(h ^ round(0, load(at)), 27) * p1 + p4;
    for (; at < end; ++at)
        h = std::rotl(h ^ (std::uint64_t(std::uint8_t(*at)) * p5), 11) * p1;
    h ^= h >> 33;
    h *= p2;
    h ^= h >> 29;
    h *= p3;
    return h ^ (h >> 32);
}

// One number for each distinct block: blocks are hashed once, and a block
// whose hash is known is confirmed by its bytes. An open table of at least
// twice as many slots as blocks, probed in a row.
class BlockIds {
public:
    explicit BlockIds(std::size_t n) : slots(std::bit_ceil(2 * n + 2), kNone) { blocks.reserve(n); }
    std::uint32_t Of(const Block& b) {
        const std::uint64_t h = HashOf(b.Data()) ^
                                std::uint64_t(std::uint32_t(b.IdTipoBloque)) * 0x9E3779B97F4A7C15u;
        const std::size_t mask = slots.size() - 1;
        for (std::size_t i = h & mask;; i = (i + 1) & mask) {
            const std::uint32_t id = slots[i];
            if (id == kNone) {
                blocks.push_back({&b, h});
                return slots[i] = std::uint32_t(blocks.size() - 1);
            }
            if (blocks[id].hash == h && SameBlock(*blocks[id].block, b)) return id;
        }
    }
    std::size_t Count() const { return blocks.size(); }

private:
    static constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();
    struct Entry {
        const Block* block;
        std::uint64_t hash;
    };
    std::vector<std::uint32_t> slots;
    std::vector<Entry> blocks;
};

// Writes the rows, putting each left-out block before the first row that
// takes a later block of its side.
class Rows {
public:
    static constexpr std::size_t kEmpty = std::numeric_limits<std::size_t>::max();

    Rows(const std::vector<const Block*>& a, const std::vector<const Block*>& b, Comparison& c)
        : a(a), b(b), c(c) {}

    void Add(RowKind kind, std::size_t ia, std::size_t ib) {
        if (ia != kEmpty) LeftA(ia), ++nextA;
        if (ib != kEmpty) LeftB(ib), ++nextB;
        c.rows.push_back({kind, ia == kEmpty ? 0 : std::int64_t(ia) + 1,
                          ib == kEmpty ? 0 : std::int64_t(ib) + 1});
        c.equal += kind == RowKind::Equal;
        c.changed += kind == RowKind::Changed;
        c.onlyA += kind == RowKind::OnlyA;
        c.onlyB += kind == RowKind::OnlyB;
    }
    void Finish() {
        LeftA(a.size());
        LeftB(b.size());
    }

private:
    void LeftA(std::size_t end) {
        for (; nextA < end; ++nextA)
            c.rows.push_back({RowKind::Left, std::int64_t(nextA) + 1, 0});
    }
    void LeftB(std::size_t end) {
        for (; nextB < end; ++nextB)
            c.rows.push_back({RowKind::Left, 0, std::int64_t(nextB) + 1});
    }

    const std::vector<const Block*>& a;
    const std::vector<const Block*>& b;
    Comparison& c;
    std::size_t nextA = 0, nextB = 0;
};

std::vector<const Block*> ListOf(TZXTape& tape) {
    std::vector<const Block*> out;
    out.reserve(std::size_t(tape.Blocks().Count()));
    for (const BlockRef& b : tape.Blocks())
        out.push_back(b.get());
    return out;
}

} // namespace

Comparison CompareTapes(TZXTape& ta, TZXTape& tb) {
    Comparison c;
    c.sameArchiveInfo = std::all_of(
        std::begin(kArchiveFields), std::end(kArchiveFields), [&](const ArchiveField& f) {
            return ta.ArchiveInfo().*(f.field) == tb.ArchiveInfo().*(f.field);
        });
    const std::vector<const Block*> a = ListOf(ta), b = ListOf(tb);
    // The blocks that take part, as places in each list.
    std::vector<std::size_t> sa, sb;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (!LeftOut(*a[i])) sa.push_back(i);
    for (std::size_t j = 0; j < b.size(); ++j)
        if (!LeftOut(*b[j])) sb.push_back(j);

    // Tapes that differ in a few places share most of their head and tail:
    // those go by their bytes alone, without a hash.
    std::size_t head = 0, tail = 0;
    while (head < sa.size() && head < sb.size() && SameBlock(*a[sa[head]], *b[sb[head]]))
        ++head;
    while (tail < sa.size() - head && tail < sb.size() - head &&
           SameBlock(*a[sa[sa.size() - 1 - tail]], *b[sb[sb.size() - 1 - tail]]))
        ++tail;

    BlockIds ids(sa.size() + sb.size() - 2 * (head + tail));
    Symbols ma, mb;
    for (std::size_t i = head; i < sa.size() - tail; ++i)
        ma.push_back(ids.Of(*a[sa[i]]));
    for (std::size_t j = head; j < sb.size() - tail; ++j)
        mb.push_back(ids.Of(*b[sb[j]]));

    Pairs equal;
    equal.reserve(head + tail + std::min(ma.size(), mb.size()));
    for (std::size_t i = 0; i < head; ++i)
        equal.emplace_back(i, i);
    for (const auto& [i, j] : CommonSubsequence(ma, mb, ids.Count()))
        equal.emplace_back(head + i, head + j);
    for (std::size_t t = tail; t > 0; --t)
        equal.emplace_back(sa.size() - t, sb.size() - t);

    std::unordered_map<std::int32_t, std::uint32_t> kinds;
    auto kindOf = [&](const Block* block) {
        return kinds.try_emplace(block->IdTipoBloque, std::uint32_t(kinds.size())).first->second;
    };
    Rows rows(a, b, c);
    // The blocks left over between two equal rows: paired by kind, the rest
    // of A before the rest of B between pairs.
    auto gap = [&](std::size_t fromA, std::size_t toA, std::size_t fromB, std::size_t toB) {
        Pairs paired;
        if (fromA < toA && fromB < toB) {
            Symbols ka, kb;
            for (std::size_t i = fromA; i < toA; ++i)
                ka.push_back(kindOf(a[sa[i]]));
            for (std::size_t j = fromB; j < toB; ++j)
                kb.push_back(kindOf(b[sb[j]]));
            paired = CommonSubsequence(ka, kb, kinds.size());
        }
        std::size_t i = fromA, j = fromB;
        for (const auto& [pi, pj] : paired) {
            for (; i < fromA + pi; ++i)
                rows.Add(RowKind::OnlyA, sa[i], Rows::kEmpty);
            for (; j < fromB + pj; ++j)
                rows.Add(RowKind::OnlyB, Rows::kEmpty, sb[j]);
            rows.Add(RowKind::Changed, sa[i++], sb[j++]);
        }
        for (; i < toA; ++i)
            rows.Add(RowKind::OnlyA, sa[i], Rows::kEmpty);
        for (; j < toB; ++j)
            rows.Add(RowKind::OnlyB, Rows::kEmpty, sb[j]);
    };

    c.rows.reserve(a.size() + b.size());
    std::size_t nextA = 0, nextB = 0;
    for (const auto& [i, j] : equal) {
        gap(nextA, i, nextB, j);
        rows.Add(RowKind::Equal, sa[i], sb[j]);
        nextA = i + 1, nextB = j + 1;
    }
    gap(nextA, sa.size(), nextB, sb.size());
    rows.Finish();
    return c;
}

std::string CompareSummary(const Comparison& c) {
    return "Iguales: " + std::to_string(c.equal) + "  Distintos: " + std::to_string(c.changed) +
           "  Sólo en A: " + std::to_string(c.onlyA) + "  Sólo en B: " + std::to_string(c.onlyB);
}

std::string ArchiveInfoSummary(const Comparison& c) {
    return c.sameArchiveInfo ? "La información de archivo es igual"
                             : "La información de archivo es distinta";
}

} // namespace cintal
