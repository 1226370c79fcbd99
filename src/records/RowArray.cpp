#include "records/RowArray.h"

int RowArray::indexOfKey(std::int32_t key) const {
    const int guess = key - 1;
    if (guess >= 0 && guess < size() && at(guess).key == key)
        return guess;
    int low = 0;
    int high = size();
    while (low < high) {
        const int middle = low + (high - low) / 2;
        if (at(middle).key < key)
            low = middle + 1;
        else
            high = middle;
    }
    return low < size() && at(low).key == key ? low : -1;
}
