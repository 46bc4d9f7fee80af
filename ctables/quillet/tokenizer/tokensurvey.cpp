#include "tokenizer/tokensurvey.h"

#include "tokenizer/tokencounter.h"
#include "tokenizer/tokenscanner.h"

namespace quillet {

TokenSurvey SurveyTokens(const CodePage& codePage, std::string_view text, bool skipLeadingSign,
                         int maxTokens) {
    if (text.data() == nullptr) return {};
    TokenCounter counter(codePage);
    TokenSurvey survey;
    survey.state = TokenScanner(codePage, text, counter).Run(skipLeadingSign, maxTokens);
    survey.count = counter.Count();
    survey.firstValue = counter.FirstValue();
    survey.firstIsLiteral = counter.FirstIsLiteral();
    return survey;
}

}  // namespace quillet
