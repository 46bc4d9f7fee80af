// A dimension may be nested as deep as its command is long, so that nothing here calls itself: each
// node comes before its operands, and from the last node to the first all operands are ready when
// their operator is.
#include "outline/tableterms.h"

#include <utility>

namespace quillet::outline {

namespace {

void Append(Terms& terms, const Terms& more, AccountBuilder& builder) {
    builder.Charge(more.NodeCount() + more.Count());
    for (std::size_t term = 0; term < more.Count(); ++term) {
        terms.AddTerm();
        terms.Extend(more[term]);
    }
}

// Each term of the first part with each of the second and so on, the last ones changing fastest.
[[nodiscard]] Terms Product(const std::vector<Terms>& parts, AccountBuilder& builder) {
    Terms terms;
    if (parts.empty()) return terms;
    std::vector<std::size_t> chosen(parts.size(), 0);
    while (true) {
        terms.AddTerm();
        for (std::size_t part = 0; part < parts.size(); ++part) {
            builder.Charge(1 + parts[part][chosen[part]].size());
            terms.Extend(parts[part][chosen[part]]);
        }
        std::size_t part = parts.size();
        while (part > 0 && ++chosen[part - 1] == parts[part - 1].Count()) chosen[--part] = 0;
        if (part == 0) return terms;
    }
}

[[nodiscard]] Terms Sum(std::vector<Terms>& parts, AccountBuilder& builder) {
    if (parts.empty()) return {};
    Terms terms = std::move(parts.front());
    for (std::size_t part = 1; part < parts.size(); ++part) Append(terms, parts[part], builder);
    return terms;
}

}  // namespace

Terms MultiplyOut(const Dimension& dimension, const std::vector<bool>& isLeft,
                  AccountBuilder& builder) {
    if (dimension.empty()) return {};
    builder.Charge(dimension.size());
    std::vector<Terms> terms(dimension.size());
    for (std::size_t node = dimension.size(); node-- > 0;) {
        if (!IsOperator(dimension[node].role)) {
            if (!isLeft[node]) continue;
            terms[node].AddTerm();
            terms[node].Extend(std::span(&node, 1));
            continue;
        }
        std::vector<Terms> parts;
        for (std::size_t operand = node + 1; operand < dimension[node].end;
             operand = dimension[operand].end) {
            if (terms[operand].Count() > 0) parts.push_back(std::exchange(terms[operand], {}));
        }
        if (parts.size() == 1) {
            terms[node] = std::move(parts.front());
        } else if (dimension[node].role == Role::kStacking) {
            terms[node] = Sum(parts, builder);
        } else {
            terms[node] = Product(parts, builder);
        }
    }
    return std::move(terms.front());
}

}  // namespace quillet::outline
