#include "VertexMerger.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace koltx {

namespace {

constexpr uint32_t EMPTY = std::numeric_limits<uint32_t>::max();

uint64_t bits(double value) {
    value += 0.0; // -0.0 and 0.0 are one key
    uint64_t out;
    std::memcpy(&out, &value, sizeof out);
    return out;
}

uint64_t hashCell(double x, double y, double z) {
    uint64_t h = bits(x) * 0x9E3779B97F4A7C15ull;
    h ^= bits(y) + 0x7F4A7C159E3779B9ull + (h << 6) + (h >> 2);
    h ^= bits(z) + 0x94D049BB133111EBull + (h << 6) + (h >> 2);
    h ^= h >> 31;
    h *= 0xBF58476D1CE4E5B9ull;
    return h ^ (h >> 29);
}

bool sameCell(double const* a, double const* b) {
    return bits(a[0]) == bits(b[0]) && bits(a[1]) == bits(b[1]) && bits(a[2]) == bits(b[2]);
}

// The cells vertices fall into: twice the tolerance wide, or the coordinates themselves where
// only exact duplicates are joined.
struct Grid {
    explicit Grid(double tolerance)
        : tolerance(tolerance), tolerance2(tolerance * tolerance),
          inverse(tolerance > 0.0 ? 1.0 / (2.0 * tolerance) : 0.0),
          exact(!(inverse > 0.0) || std::isinf(inverse)) {}

    void cellOf(double const* p, double* cell) const {
        for (int a = 0; a < 3; ++a)
            cell[a] = exact ? p[a] + 0.0 : std::floor(p[a] * inverse) + 0.0;
    }
    // The lowest and highest cell on each axis that a point within the tolerance of `p` can be in.
    void reach(double const* p, double* lo, double* hi) const {
        for (int a = 0; a < 3; ++a) {
            lo[a] = std::floor((p[a] - tolerance) * inverse) + 0.0;
            hi[a] = std::floor((p[a] + tolerance) * inverse) + 0.0;
        }
    }

    double tolerance;
    double tolerance2;
    double inverse;
    bool exact;
};

} // namespace

uint32_t VertexMerger::merge(std::vector<double> const& coords, double tolerance,
                             std::vector<uint32_t>& remap, std::vector<double>& merged) {
    if (mergeByComparison(coords, tolerance, remap, merged))
        return static_cast<uint32_t>(merged.size() / 3);
    return mergeByCells(coords, tolerance, remap, merged);
}

// Most meshes of a city are a face or two. For them, comparing each vertex with the few
// representatives before it is cheaper than hashing the eight cells around it, and it chooses
// what the cell walk chooses: the nearest representative, and among equally near ones the first
// the walk meets (cells in ascending x, y, z; within a cell the latest representative first).
// It keeps to coordinates whose cell numbers are exact integers, where the walk visits exactly
// the cells between its bounds.
bool VertexMerger::mergeByComparison(std::vector<double> const& coords, double tolerance,
                                     std::vector<uint32_t>& remap, std::vector<double>& merged) {
    constexpr size_t most = 32;
    size_t const count = coords.size() / 3;
    if (count > most)
        return false;
    Grid const grid(tolerance);
    if (!grid.exact) {
        constexpr double exactCells = 4503599627370496.0 / 4.0; // 2^50
        for (size_t i = 0; i < count * 3; ++i)
            if (!(std::fabs(coords[i]) * grid.inverse < exactCells))
                return false;
    }
    remap.assign(count, 0);
    merged.clear();
    merged.reserve(coords.size());

    for (size_t i = 0; i < count; ++i) {
        double const* p = &coords[i * 3];
        size_t const representatives = merged.size() / 3;
        uint32_t found = EMPTY;
        if (grid.exact) {
            double own[3];
            grid.cellOf(p, own);
            for (size_t r = 0; r < representatives && found == EMPTY; ++r) {
                double cell[3];
                grid.cellOf(&merged[r * 3], cell);
                if (sameCell(cell, own))
                    found = static_cast<uint32_t>(r);
            }
        } else {
            for (size_t r = 0; r < representatives && found == EMPTY; ++r) {
                double const* q = &merged[r * 3];
                if (q[0] == p[0] && q[1] == p[1] && q[2] == p[2])
                    found = static_cast<uint32_t>(r);
            }
            if (found == EMPTY) {
                double lo[3], hi[3];
                grid.reach(p, lo, hi);
                double best = 0.0;
                double bestCell[3] = {0.0, 0.0, 0.0};
                for (size_t r = representatives; r-- > 0;) {
                    double const* q = &merged[r * 3];
                    double const dx = p[0] - q[0], dy = p[1] - q[1], dz = p[2] - q[2];
                    double const d2 = dx * dx + dy * dy + dz * dz;
                    if (!(d2 < grid.tolerance2 || d2 == 0.0))
                        continue;
                    double cell[3];
                    grid.cellOf(q, cell);
                    bool inside = true;
                    for (int a = 0; a < 3; ++a)
                        inside = inside && lo[a] <= cell[a] && cell[a] <= hi[a];
                    if (!inside)
                        continue;
                    // Latest first: an equally near one later in this loop wins only with a
                    // lower cell.
                    bool const better = found == EMPTY || d2 < best ||
                                        (d2 == best && std::lexicographical_compare(
                                                           cell, cell + 3, bestCell, bestCell + 3));
                    if (better) {
                        found = static_cast<uint32_t>(r);
                        best = d2;
                        std::copy(cell, cell + 3, bestCell);
                    }
                }
            }
        }
        if (found == EMPTY) {
            found = static_cast<uint32_t>(representatives);
            merged.insert(merged.end(), p, p + 3);
        }
        remap[i] = found;
    }
    return true;
}

uint32_t VertexMerger::mergeByCells(std::vector<double> const& coords, double tolerance,
                                    std::vector<uint32_t>& remap, std::vector<double>& merged) {
    size_t const count = coords.size() / 3;
    remap.assign(count, 0);
    merged.clear();
    merged.reserve(coords.size());
    if (count == 0)
        return 0;

    Grid const grid(tolerance);

    // Open addressing, cell -> first representative; chains continue through `next`. The
    // high hash bits sit beside the head, so one cache line answers most probes, and the table
    // grows with the cells in use rather than with the input.
    struct Slot {
        uint32_t head = EMPTY;
        uint32_t tag = 0;
    };
    // Most meshes of a city are a few faces: their table is sized to them rather than cleared
    // at full size for each.
    std::size_t initial = 16;
    while (initial < 4 * count && initial < 1024)
        initial *= 2;
    std::vector<Slot> slots(initial);
    size_t mask = slots.size() - 1;
    size_t cells = 0;
    std::vector<uint32_t> next;
    next.reserve(count);

    auto probe = [&](uint64_t hash, double const* cell) -> size_t {
        uint32_t const tag = static_cast<uint32_t>(hash >> 32);
        size_t slot = hash & mask;
        for (;;) {
            Slot const& entry = slots[slot];
            if (entry.head == EMPTY)
                return slot;
            if (entry.tag == tag) {
                double headCell[3];
                grid.cellOf(&merged[size_t(entry.head) * 3], headCell);
                if (sameCell(headCell, cell))
                    return slot;
            }
            slot = (slot + 1) & mask;
        }
    };
    auto findSlot = [&](double const* cell) -> size_t {
        return probe(hashCell(cell[0], cell[1], cell[2]), cell);
    };
    auto grow = [&]() {
        std::vector<Slot> old(slots.size() * 2);
        old.swap(slots);
        mask = slots.size() - 1;
        for (Slot const& entry : old) {
            if (entry.head == EMPTY)
                continue;
            double cell[3];
            grid.cellOf(&merged[size_t(entry.head) * 3], cell);
            uint64_t const hash = hashCell(cell[0], cell[1], cell[2]);
            size_t slot = hash & mask;
            while (slots[slot].head != EMPTY)
                slot = (slot + 1) & mask;
            slots[slot] = entry;
        }
    };

    for (size_t i = 0; i < count; ++i) {
        double const* p = &coords[i * 3];
        uint32_t found = EMPTY;
        if (grid.exact) {
            double cell[3];
            grid.cellOf(p, cell);
            uint32_t const head = slots[findSlot(cell)].head;
            if (head != EMPTY)
                found = head;
        } else {
            // An exact duplicate in the vertex's own cell is as near as it gets: no further look.
            double own[3];
            grid.cellOf(p, own);
            for (uint32_t r = slots[findSlot(own)].head; r != EMPTY && found == EMPTY;
                 r = next[r]) {
                double const* q = &merged[size_t(r) * 3];
                if (q[0] == p[0] && q[1] == p[1] && q[2] == p[2])
                    found = r;
            }
            if (found != EMPTY) {
                remap[i] = found;
                continue;
            }
            double lo[3], hi[3];
            grid.reach(p, lo, hi);
            double best = grid.tolerance2;
            double cell[3];
            for (cell[0] = lo[0]; cell[0] <= hi[0]; cell[0] += 1.0) {
                for (cell[1] = lo[1]; cell[1] <= hi[1]; cell[1] += 1.0) {
                    for (cell[2] = lo[2]; cell[2] <= hi[2]; cell[2] += 1.0) {
                        for (uint32_t r = slots[findSlot(cell)].head; r != EMPTY; r = next[r]) {
                            double const* q = &merged[size_t(r) * 3];
                            double const dx = p[0] - q[0], dy = p[1] - q[1], dz = p[2] - q[2];
                            double const d2 = dx * dx + dy * dy + dz * dz;
                            if (d2 < best || (found == EMPTY && d2 == 0.0)) {
                                best = d2;
                                found = r;
                            }
                        }
                        if (cell[2] + 1.0 == cell[2])
                            break; // beyond the precision of doubles, neighbours coincide
                    }
                    if (cell[1] + 1.0 == cell[1])
                        break;
                }
                if (cell[0] + 1.0 == cell[0])
                    break;
            }
        }
        if (found != EMPTY) {
            remap[i] = found;
            continue;
        }
        uint32_t const index = static_cast<uint32_t>(next.size());
        merged.insert(merged.end(), p, p + 3);
        double cell[3];
        grid.cellOf(p, cell);
        uint64_t const hash = hashCell(cell[0], cell[1], cell[2]);
        size_t slot = probe(hash, cell);
        if (slots[slot].head == EMPTY) {
            if ((cells + 1) * 4 > slots.size()) {
                grow();
                slot = probe(hash, cell);
            }
            ++cells;
            slots[slot].tag = static_cast<uint32_t>(hash >> 32);
        }
        next.push_back(slots[slot].head);
        slots[slot].head = index;
        remap[i] = index;
    }
    return static_cast<uint32_t>(next.size());
}

} // namespace koltx
