#include "igraph/gpl/gplcolumns.h"

#include <utility>

#include "igraph/gpl/gplvocabulary.h"
#include "platform/assertion.h"

namespace quillet::igraph {

namespace {

constexpr std::string_view kModule = "gplcolumns";

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsIdentifierByte(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || IsDigit(c) || c == '_' ||
           static_cast<unsigned char>(c) >= 128;
}

std::string ToIdentifier(std::string_view name, char prefix) {
    std::string identifier(name);
    for (char& c : identifier) {
        if (!IsIdentifierByte(c)) c = '_';
    }
    if (identifier.empty() || identifier.front() == '_') {
        identifier.insert(0, 1, prefix);
    } else if (IsDigit(identifier.front())) {
        identifier.insert(0, std::string{prefix, '_'});
    }
    return identifier;
}

}  // namespace

// The source's identifier, and words that mean something in expressions.
IdentifierPool::IdentifierPool() : m_taken{"S", "AND", "OR", "NOT", "TRUE", "FALSE"} {}

IdentifierPool::Identifier IdentifierPool::Take(std::string_view name, std::string_view upperName) {
    const Identifier base{ToIdentifier(name, 'v'), ToIdentifier(upperName, 'V')};
    Identifier identifier = base;
    if (m_taken.contains(base.key)) {
        // Going on from the last suffix keeps many like names from being tried again and again.
        std::size_t& next = m_nextSuffix.try_emplace(base.key, 2).first->second;
        do {
            const std::string suffix = '_' + std::to_string(next++);
            identifier = {base.text + suffix, base.key + suffix};
        } while (m_taken.contains(identifier.key));
    }
    m_taken.insert(identifier.key);
    return identifier;
}

Columns::Columns(const IgraphCommand& command, std::span<const VariableRole> roles,
                 bool needsCaseLabels, CommandBudget& budget)
    : m_budget(budget) {
    // A variable that is needed in two ways gets both its columns where it first appears.
    std::map<std::string_view, std::vector<MeasurementLevel>> levels;
    for (const VariableRole& role : roles) {
        if (role.pReference->IsVariable()) levels[role.pReference->key].push_back(role.level);
    }
    for (const VariableRole& role : roles) {
        const VariableReference& variable = *role.pReference;
        if (!variable.IsVariable()) continue;
        const auto found = levels.find(variable.key);
        if (found == levels.end()) continue;
        for (const MeasurementLevel level : found->second) {
            Add({variable.key, level}, variable.name, variable.name, variable.key);
        }
        levels.erase(found);
    }
    for (const Dimension* pDimension : {&command.x1, &command.x2, &command.y}) {
        if (!pDimension->variable.IsCaseNumber()) continue;
        Add({"", pDimension->level.value_or(MeasurementLevel::kCategorical)},
            gpl::kCaseNumberColumn, "casenum", "CASENUM");
    }
    if (needsCaseLabels) {
        const IdentifierPool::Identifier identifier = m_pool.Take("id", "ID");
        m_caseLabel = identifier.text;
        m_columns.push_back(
            {identifier, std::string(gpl::kCaseNumberColumn), MeasurementLevel::kCategorical});
    }
}

void Columns::Add(const ColumnKey& key, std::string_view name, std::string_view identifier,
                  std::string_view upperIdentifier) {
    if (!m_find.try_emplace(key, m_columns.size()).second) return;
    m_columns.push_back({m_pool.Take(identifier, upperIdentifier), std::string(name), key.second});
}

void Columns::Declare(Program& program) const {
    program.AddNamed(
        StatementLabel::kSource, gpl::kSourceName,
        Expression::Call(gpl::kUserSource,
                         {Expression::Call(gpl::kId, {Expression::Text(gpl::kDataSetName)})}));
    for (const Column& column : m_columns) {
        Expression declaration = Expression::Call(
            gpl::kCol,
            {Expression::Call(gpl::kSourceFunction, {Expression::Identifier(gpl::kSourceName)}),
             Expression::Call(gpl::kName, {Expression::Text(column.name)})});
        if (column.level == MeasurementLevel::kCategorical) {
            declaration.AddArgument(Expression::Call(gpl::kUnitCategory));
        }
        program.AddNamed(StatementLabel::kData, column.identifier.text, declaration);
    }
}

const Columns::Column* Columns::Find(const VariableReference& reference,
                                     MeasurementLevel level) const {
    const auto found = m_find.find({reference.IsVariable() ? reference.key : "", level});
    if (!QUILLET_ASSERT(found != m_find.end(), "found != m_find.end()")) return nullptr;
    return &m_columns[found->second];
}

Expression Columns::Use(const VariableReference& reference, MeasurementLevel level) const {
    const Column* pColumn = Find(reference, level);
    if (pColumn == nullptr) return Expression::Identifier("");
    const std::string& name = pColumn->identifier.text;
    if (std::exchange(pColumn->isUsed, true)) {
        static_assert(CommandBudget::kNodeCopy >= sizeof(Expression));
        m_budget.ChargeText(name.size());
        m_budget.ChargeCopies(CommandBudget::kNodeCopy + name.size());
    }
    return Expression::Identifier(name);
}

Expression Columns::CaseLabel() const { return Expression::Identifier(m_caseLabel); }

std::string Columns::TakeComputedName(const VariableReference& reference) {
    const Column* pColumn = Find(reference, MeasurementLevel::kScale);
    if (pColumn == nullptr) return "";
    // It stands in its own statement and in that of the element.
    m_budget.ChargeText(2 * pColumn->identifier.text.size());
    m_budget.ChargeCopies(2 * (CommandBudget::kNodeCopy + pColumn->identifier.text.size()));
    const std::string number = std::to_string(++m_computedCount);
    return m_pool
        .Take(pColumn->identifier.text + "_t" + number, pColumn->identifier.key + "_T" + number)
        .text;
}

}  // namespace quillet::igraph
