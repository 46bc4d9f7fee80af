// Whether a text looks as if it was written in another encoding than the one it is read in.
#ifndef QUILLET_DRIVER_ENCODINGDOUBT_H
#define QUILLET_DRIVER_ENCODINGDOUBT_H

#include <string>
#include <string_view>

#include "platform/codepage.h"

namespace quillet {

/// What speaks against the encoding of a text.
struct EncodingDoubt {
    enum class Reason {
        kNone,
        kOtherName,  ///< Its first line names another encoding.
        kLooksWrong,
    };

    Reason reason = Reason::kNone;
    std::string name;  ///< The encoding that it names, or that it is probably in.
};

/// Looks at `text`, which is read in `codePage`, whose name is `readAs` if that is known. A text
/// that is read as UTF-8 is that beyond doubt. Linear.
[[nodiscard]] EncodingDoubt DoubtEncoding(std::string_view text, const CodePage& codePage,
                                          std::string_view readAs);

/// The name of the encoding in a first line "* Encoding: NAME."; empty when there is none.
[[nodiscard]] std::string_view EncodingNamedBy(std::string_view text);

}  // namespace quillet

#endif  // QUILLET_DRIVER_ENCODINGDOUBT_H
