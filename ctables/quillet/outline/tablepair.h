// A table that was asked for and the one that was written for it, term by term.
#ifndef QUILLET_OUTLINE_TABLEPAIR_H
#define QUILLET_OUTLINE_TABLEPAIR_H

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "outline/accountbuilder.h"
#include "outline/tableoutline.h"
#include "outline/tableterms.h"

namespace quillet::outline {

/// The three dimensions, in their order.
inline constexpr std::array<Axis, kAxes> kAllAxes = {Axis::kRows, Axis::kColumns, Axis::kLayers};

/// "rows", "columns" or "layers".
[[nodiscard]] std::string_view NameOf(Axis axis);

/// One dimension of both tables. Variables are numbers, the same for both tables and all of their
/// dimensions: two nodes stand for the same variable when these agree.
struct DimensionPair {
    std::vector<std::size_t> askedVariables;  ///< By node; `kNowhere` for what is no variable.
    std::vector<std::size_t> writtenVariables;
    Terms asked;
    Terms written;
    std::vector<std::size_t> writtenOf;  ///< By term that was asked for; `kNowhere` for none.
    bool isSame = true;                  ///< The terms are the same, in the same order.
    /// Some variable is not what it was: a scale variable that was a category, and the like. What
    /// `DegradedNodes` tells does not count.
    bool hasOtherRoles = false;
};

/// Two tables. The outlines are borrowed.
class TablePair {
public:
    TablePair(const CommandOutline& asked, const TableOutline& askedTable,
              const TableOutline& writtenTable, AccountBuilder& builder);

    [[nodiscard]] const TableOutline& Asked() const { return m_asked; }
    [[nodiscard]] const TableOutline& Written() const { return m_written; }
    [[nodiscard]] const Settings& AskedSettings() const { return m_askedCommand.settings; }
    /// The same without those that a FORMAT took along, which the conversion did not see.
    [[nodiscard]] const Settings& SeenSettings() const { return m_seenSettings; }
    [[nodiscard]] const DimensionPair& At(Axis axis) const {
        return m_dimensions[static_cast<std::size_t>(axis)];
    }
    [[nodiscard]] const Dimension& AskedDimension(Axis axis) const {
        return m_asked.dimensions[static_cast<std::size_t>(axis)];
    }
    [[nodiscard]] const Dimension& WrittenDimension(Axis axis) const {
        return m_written.dimensions[static_cast<std::size_t>(axis)];
    }

    /// The number of the variable that the old command knows by this key; `kNowhere` for one that
    /// is not in the table.
    [[nodiscard]] std::size_t VariableOf(const std::string& askedKey) const;
    /// The number of the variable that the new command knows by this key.
    [[nodiscard]] std::size_t WrittenVariableOf(const std::string& writtenKey) const;
    /// As the old command spells it where it has it.
    [[nodiscard]] std::string_view NameOfVariable(std::size_t variable) const {
        return m_names[variable];
    }
    /// As the new command knows it.
    [[nodiscard]] const std::string& KeyOfVariable(std::size_t variable) const {
        return m_keys[variable];
    }
    /// What the variable is in the new table.
    [[nodiscard]] Role RoleOf(std::size_t variable) const { return m_roles[variable]; }

    /// Nodes of the old table that are ordinary categories in the new one, and should not be; one
    /// for each name.
    [[nodiscard]] const std::vector<const Node*>& DegradedNodes() const { return m_degraded; }
    /// True for a total that is an ordinary category in the new table.
    [[nodiscard]] bool IsDegraded(const Name& name) const;

private:
    void NumberWritten(Axis axis);
    void NumberAsked(Axis axis, const CodePage& codePage);
    void Align(Axis axis, AccountBuilder& builder);
    [[nodiscard]] std::size_t NumberFor(const std::string& writtenKey, std::string_view name,
                                        Role role);

    const CommandOutline& m_askedCommand;
    Settings m_seenSettings;
    const TableOutline& m_asked;
    const TableOutline& m_written;
    std::array<DimensionPair, kAxes> m_dimensions;
    std::unordered_map<std::string, std::size_t> m_writtenNumbers;
    std::unordered_map<std::string, std::size_t> m_askedNumbers;
    std::vector<std::string_view> m_names;
    std::vector<std::string> m_keys;
    std::vector<Role> m_roles;
    std::vector<const Node*> m_degraded;
    std::unordered_set<std::string_view> m_degradedKeys;
};

}  // namespace quillet::outline

#endif  // QUILLET_OUTLINE_TABLEPAIR_H
