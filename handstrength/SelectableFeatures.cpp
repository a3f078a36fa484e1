#include "handstrength/SelectableFeatures.h"

#include "handstrength/HandStrengthMasks.h"

const std::vector<SelectableFeatureRow>& enablingFeatureRows() {
    // Rows 8, 9 and 10 have two-bit triggers and never fire; rows 11, 12 and 13 do their work.
    static const std::vector<SelectableFeatureRow> rows = {
        {0x400000000000ULL, 0x2000000000000ULL},
        {0x800000000000ULL, 0x2000000000000ULL},
        {0x80ULL, 0x003800000000CE00ULL},
        {0x200ULL, 0x1C0000ULL},
        {0x400ULL, 0x1C0000ULL},
        {0x800ULL, 0x1C0000ULL},
        {0x40ULL, 0x434000ULL},
        {0x400040ULL, 0x1808000ULL},
        {0x10040ULL, 0xE00ULL},
        {0x20040ULL, 0xE00ULL},
        {0x400000ULL, 0x1808000ULL},
        {0x20000ULL, 0xE00ULL},
        {0x10000ULL, 0xE00ULL},
        {0x20ULL, 0x30000ULL},
        {0x20000ULL, 0x1C0000ULL},
        {0x8ULL, 0x7E00ULL},
        {0x4000000ULL, 0x0040000F80200000ULL},
        {0x20000000ULL, 0x0040000F80200000ULL},
        {0x40000000ULL, 0x018000F000000000ULL},
        {0x8000000ULL, 0x0180000000000000ULL},
        {0x10000000ULL, 0x0180000000000000ULL},
    };
    return rows;
}

const std::vector<SelectableFeatureRow>& disablingFeatureRows() {
    // The row of 0x800000000 also takes the kicker bits away, unlike its four neighbours.
    static const std::vector<SelectableFeatureRow> rows = {
        {0x100ULL, 0xFFULL},
        {0x80ULL, 0x17FULL},
        {0x40ULL, 0x1BFULL},
        {0x20ULL, 0x1DFULL},
        {0x10ULL, 0x580001EFULL},
        {0x8ULL, 0x240001F7ULL},
        {0x4ULL, 0x1FBULL},
        {0x2ULL, 0x1FDULL},
        {0x1ULL, 0x0000C0007C0001FEULL},
        {0x400000ULL, 0x34000ULL},
        {0x10000ULL, 0x424000ULL},
        {0x20000ULL, 0x414000ULL},
        {0x4000ULL, 0x430000ULL},
        {0x200ULL, 0x003800000000FC00ULL},
        {0x400ULL, 0x003800000000FA00ULL},
        {0x800ULL, 0x003800000000F600ULL},
        {0x1000ULL, 0x003800000000EE00ULL},
        {0x2000ULL, 0x003800000000DE00ULL},
        {0x4000ULL, 0x003800000000BE00ULL},
        {0x8000000000000ULL, 0x003000000000FE00ULL},
        {0x10000000000000ULL, 0x002800000000FE00ULL},
        {0x20000000000000ULL, 0x001800000000FE00ULL},
        {0x8000ULL, 0x0038000000007E00ULL},
        {0x80000000ULL, 0xF00000000ULL},
        {0x100000000ULL, 0xE80000000ULL},
        {0x200000000ULL, 0xD80000000ULL},
        {0x400000000ULL, 0xB80000000ULL},
        {0x800000000ULL, 0x7801C0000ULL},
        {0x4000000000ULL, 0xB000000000ULL},
        {0x8000000000ULL, 0x7000000000ULL},
        {0x2000000000ULL, 0xD000000000ULL},
        {0x1000000000ULL, 0xE000000000ULL},
        {0x8000000ULL, 0x40000000ULL},
        {0x40000000ULL, 0x8000000ULL},
        {0x4000000ULL, 0x20000000ULL},
        {0x20000000ULL, 0x4000000ULL},
        {0x800000000000ULL, 0x400000000000ULL},
        {0x400000000000ULL, 0x800000000000ULL},
        {0x200000ULL, 0x40000000000000ULL},
        {0x40000000000000ULL, 0x200000ULL},
        {0x80000000000000ULL, 0x100000000000000ULL},
        {0x100000000000000ULL, 0x80000000000000ULL},
        {0x40000ULL, 0x180000ULL},
        {0x80000ULL, 0x140000ULL},
        {0x100000ULL, 0xC0000ULL},
    };
    return rows;
}

unsigned long long selectableFeatures(const HandStrengthKey& key) {
    unsigned long long mask = baseSelectableMask;
    for (const SelectableFeatureRow& row : enablingFeatureRows()) {
        for (int bit = 63; bit >= 0; --bit) {
            const unsigned long long single = 1ULL << bit;
            if ((key.positive & single) && row.trigger == single)
                mask |= row.mask;
        }
    }
    for (const SelectableFeatureRow& row : disablingFeatureRows()) {
        for (int bit = 63; bit >= 0; --bit) {
            const unsigned long long single = 1ULL << bit;
            if ((key.positive & single) && row.trigger == single)
                mask &= ~row.mask;
        }
    }
    return mask & ~(key.positive | key.exclusive);
}
