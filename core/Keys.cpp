// The walk of the arrow keys.
#include "core/Keys.h"

namespace keys {

int NextCell(int prev, int key) {
    switch (key) {
        case kLeft: return prev == 0 ? 80 : prev - 1;
        case kRight: return prev == 80 ? 0 : prev + 1;
        case kUp:
            if (prev == 0) return 80;
            return prev < 9 ? prev - 9 + 80 : prev - 9;
        case kDown:
            if (prev == 80) return 0;
            return prev > 71 ? prev + 9 - 80 : prev + 9;
        default: return prev;
    }
}

char AccessChar(int key) {
    if (key >= 'A' && key <= 'Z') return static_cast<char>(key - 'A' + 'a');
    switch (key) {
        case kOemMinus: return '-';
        case kOemPlus: return '=';
        case kOemComma: return ',';
        case kOemPeriod: return '.';
        default: return '\0';
    }
}

}  // namespace keys
