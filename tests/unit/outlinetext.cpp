#include "outlinetext.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace quillet::outline {

namespace {

constexpr std::string_view kAxisNames[] = {"rows", "columns", "layers", "nowhere"};

std::string_view AxisName(Axis axis) { return kAxisNames[static_cast<std::size_t>(axis)]; }

std::string TextOfLeaf(const Node& node) {
    switch (node.role) {
        case Role::kScale:
            return node.name.text + ":scale";
        case Role::kSet:
            return node.name.text + ":set";
        case Role::kTotal:
            return node.name.text + ":total";
        case Role::kLabels:
            return "(LABELS)";
        case Role::kStatistics:
            return "(STATISTICS)";
        default:
            return node.name.text;
    }
}

std::string TextOfVariables(const VariableRange& range) {
    return range.last.IsEmpty() ? range.first.text : range.first.text + "-" + range.last.text;
}

std::string TextOfCounted(Counted counted) {
    constexpr std::string_view kNames[] = {"nothing",   "cases",  "valid cases", "all cases",
                                           "responses", "values", "valid values"};
    return std::string(kNames[static_cast<std::size_t>(counted)]);
}

std::string TextOfPercentage(const Assignment& assignment) {
    constexpr std::string_view kNames[] = {"",      "base",     "row",       "column",      "layer",
                                           "table", "subtable", "layer row", "layer column"};
    if (assignment.percentOf == PercentOf::kNothing) return "";
    std::string text = " %";
    text += kNames[static_cast<std::size_t>(assignment.percentOf)];
    text += " " + TextOfCounted(assignment.counted);
    if (assignment.against != assignment.counted) text += "/" + TextOfCounted(assignment.against);
    return text;
}

std::string TextOfFormat(const Format& format) {
    std::string text = " " + format.text + "=" + format.letters;
    if (format.width >= 0) text += " " + std::to_string(format.width);
    if (format.decimals >= 0) text += " " + std::to_string(format.decimals);
    return text;
}

class OutlineText {
public:
    std::string Write(const CommandOutline& outline) {
        WriteSettings(outline.settings);
        for (const VariableRange& range : outline.scaleVariables) {
            Add("scale " + TextOfVariables(range), range.line);
        }
        for (const DeclaredTotal& total : outline.declaredTotals) {
            const bool isAfter = total.position == Position::kAfter;
            Add((isAfter ? "ftotal " : "ptotal ") + total.name.text + Quoted(total.label),
                total.line);
        }
        for (const ResponseSet& set : outline.sets) WriteSet(set);
        for (const Heading& heading : outline.headings) WriteHeading(heading);
        for (const TableOutline& table : outline.tables) WriteTable(table);
        for (const TakenByFormat& taken : outline.takenByFormat) {
            const bool isTable = taken.table != kNowhere;
            Add("taken " + taken.subcommand.key +
                    (isTable ? " #" + std::to_string(taken.table) : ""),
                taken.line);
        }
        for (const Remark& remark : outline.remarks) WriteRemark(remark);
        return m_text;
    }

private:
    void Add(const std::string& part, long line) {
        if (!m_text.empty()) m_text += " | ";
        m_text += part;
        if (line != 1) m_text += "@" + std::to_string(line);
    }

    static std::string Quoted(const Literal& literal) {
        return literal.IsEmpty() ? "" : " '" + literal.value + "'";
    }

    void WriteSettings(const Settings& settings) {
        if (settings.emptyCellsLine > 0) {
            const bool isZero = settings.emptyCells == EmptyCells::kZero;
            Add(isZero ? "empty zero" : "empty blank", settings.emptyCellsLine);
        }
        if (settings.missingTextLine > 0) {
            Add("missing text" + Quoted(settings.missingText), settings.missingTextLine);
        }
        if (!settings.countsDuplicates) Add("no duplicates", 1);
        if (settings.missingLine > 0) {
            const bool isIncluded = settings.missing == Missing::kInclude;
            Add(isIncluded ? "missing include" : "missing exclude", settings.missingLine);
        }
        if (settings.baseLine > 0) {
            constexpr std::string_view kNames[] = {"answering", "qualified", "all"};
            Add("base " + std::string(kNames[static_cast<std::size_t>(settings.base)]),
                settings.baseLine);
        }
        if (settings.groupBaseLine > 0) {
            const bool isResponses = settings.groupBase == GroupBase::kResponses;
            Add(isResponses ? "gbase responses" : "gbase cases", settings.groupBaseLine);
        }
        if (settings.autoLabelLine > 0) {
            constexpr std::string_view kNames[] = {"default", "on", "off"};
            Add("autolabel " + std::string(kNames[static_cast<std::size_t>(settings.autoLabel)]),
                settings.autoLabelLine);
        }
    }

    void WriteSet(const ResponseSet& set) {
        std::string text = (set.countsOneValue ? "mdset " : "mcset ") + set.name.text;
        text += Quoted(set.label) + " =";
        for (const VariableRange& range : set.variables) text += " " + TextOfVariables(range);
        if (!set.value.IsEmpty()) text += " (" + set.value.source + ")";
        Add(text, set.line);
    }

    void WriteHeading(const Heading& heading) {
        constexpr std::string_view kNames[] = {"title",  "page title", "caption",
                                               "corner", "footnote",   "page footnote"};
        std::string text(kNames[static_cast<std::size_t>(heading.kind)]);
        for (const Literal& literal : heading.texts) text += Quoted(literal);
        Add(text, heading.line);
    }

    void WriteTable(const TableOutline& table) {
        std::string text = "table";
        bool hasMore = false;
        for (std::size_t axis = kAxes; axis-- > 0;) {
            hasMore = hasMore || !table.dimensions[axis].empty();
            if (!hasMore) continue;
            text.insert(5, " " + TextOfDimension(table.dimensions[axis]));
            if (axis > 0) text.insert(5, " BY");
        }
        Add(text, table.line);
        if (table.missing == Missing::kInclude) Add("with missing", 1);
        if (!table.hidesEmptyCategories) Add("with empty", 1);
        if (table.hasStatistics && table.assignments.empty()) Add("statistics", 1);
        WriteLabels(table.statisticsLabels, "slabels");
        WriteLabels(table.categoryLabels, "clabels");
        for (const Assignment& assignment : table.assignments) WriteAssignment(table, assignment);
        for (const Total& total : table.totals) WriteTotal(table, total);
        for (const Sort& sort : table.sorts) WriteSort(sort);
        if (table.hasAutomaticTitle) Add("automatic title", 1);
        for (const Heading& heading : table.headings) WriteHeading(heading);
    }

    void WriteLabels(const LabelPosition& labels, const std::string& what) {
        if (labels.axis == Axis::kNone) return;
        Add(what + " " + std::string(AxisName(labels.axis)) + (labels.isVisible ? "" : " hidden"),
            labels.line);
    }

    void WriteAssignment(const TableOutline& table, const Assignment& assignment) {
        std::string text = assignment.isKnown ? "" : "?";
        if (assignment.isUnweighted) text += "U ";
        text += assignment.function.key;
        if (!assignment.argument.empty()) text += " " + assignment.argument;
        text += "(" + assignment.on.text + Quoted(assignment.label);
        if (!assignment.format.text.empty()) text += TextOfFormat(assignment.format);
        const Range& bases = assignment.baseVariables;
        for (std::size_t at = 0; at < bases.count; ++at) {
            text += (at == 0 ? ":" : " ") + table.baseVariables[bases.first + at].text;
        }
        text += ")" + TextOfPercentage(assignment);
        if (assignment.isOfTotal) text += " of total";
        Add(text, assignment.line);
    }

    // Asked: "total t after region"; written: "total after REGION SEX".
    void WriteTotal(const TableOutline& table, const Total& total) {
        std::string text = "total " + total.name.text + Quoted(total.label);
        text += total.position == Position::kAfter ? " after" : " before";
        for (const Name& name : total.variables) text += " " + name.text;
        if (total.place.axis != Axis::kNone) {
            const Dimension& dimension =
                table.dimensions[static_cast<std::size_t>(total.place.axis)];
            if (dimension[total.place.node].name.key != total.name.key) text += " misplaced";
            text += " " + TextOfTotaled(dimension, total.totaled);
        }
        Add(text, total.line);
    }

    static std::string TextOfTotaled(const Dimension& dimension, std::size_t node) {
        if (node == kNowhere) return "nothing";
        Dimension part(dimension.begin() + static_cast<std::ptrdiff_t>(node),
                       dimension.begin() + static_cast<std::ptrdiff_t>(dimension[node].end));
        for (Node& one : part) one.end -= node;
        return TextOfDimension(part);
    }

    void WriteSort(const Sort& sort) {
        std::string text = "sort ";
        if (sort.subcommand > 0) text += "#" + std::to_string(sort.subcommand) + " ";
        text += sort.variable.text;
        text += sort.direction == Direction::kAscending ? " up" : " down";
        if (!sort.key.IsEmpty()) text += std::string(sort.isKnown ? " " : " ?") + sort.key.key;
        if (!sort.of.IsEmpty()) text += "(" + sort.of.text + ")";
        Add(text, sort.line);
    }

    void WriteRemark(const Remark& remark) {
        constexpr std::string_view kNames[] = {"passed over", "unknown", "setting", "unreadable"};
        std::string text(kNames[static_cast<std::size_t>(remark.kind)]);
        if (remark.table != kNowhere) text += " #" + std::to_string(remark.table);
        if (!remark.subcommand.IsEmpty()) text += " " + remark.subcommand.key;
        Add(text + " {" + remark.text + "}", remark.line);
    }

    std::string m_text;
};

}  // namespace

std::string TextOfOutline(const CommandOutline& outline) { return OutlineText().Write(outline); }

std::string TextOfDimension(const Dimension& dimension) {
    std::string text;
    std::vector<std::size_t> open;
    for (std::size_t at = 0; at < dimension.size(); ++at) {
        const Node& node = dimension[at];
        const std::size_t limit = open.empty() ? dimension.size() : dimension[open.back()].end;
        const bool isWhole = node.end > at && node.end <= limit && (at > 0) == !open.empty();
        if (!isWhole || (open.empty() && node.end != limit)) return text + "?";
        if (!open.empty() && at > open.back() + 1) {
            text += dimension[open.back()].role == Role::kStacking ? "+" : ">";
        }
        if (IsOperator(node.role)) {
            if (!open.empty() && dimension[open.back()].role == node.role) return text + "?";
            if (!open.empty()) text += "(";
            open.push_back(at);
            continue;
        }
        if (node.end != at + 1) return text + "?";
        text += TextOfLeaf(node);
        while (!open.empty() && dimension[open.back()].end == at + 1) {
            if (dimension[open.back()].end < open.back() + 3) return text + "?";
            open.pop_back();
            if (!open.empty()) text += ")";
        }
    }
    return open.empty() ? text : text + "?";
}

}  // namespace quillet::outline
