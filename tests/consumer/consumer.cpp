// Converts a string: the least that a user of the library has to write.
#include <quillet.h>

#include <iostream>

int main() {
    const quillet::Conversion result =
        quillet::ConvertText("LIST x\n\n  y.\nTABLES /OBSERVATION=income /TABLE=sex > income.", {});
    std::cout << result.output << result.resultLines;
    return result.outcome == quillet::Outcome::kDone ? 0 : 1;
}
