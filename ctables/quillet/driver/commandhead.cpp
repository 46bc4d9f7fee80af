#include "driver/commandhead.h"

#include <utility>

#include "tokenizer/tokensurvey.h"

namespace quillet {

CommandHead HeadOf(const CommandStream& commands, const CodePage& codePage, bool batchMode) {
    if (!commands.FirstValueMayChange()) return {commands.CommandKind(), commands.FirstValue()};
    TokenSurvey look = SurveyTokens(codePage, commands.CommandText(), batchMode, 1);
    return {KindOf(look), std::move(look.firstValue)};
}

}  // namespace quillet
