#include "migrate/storedfacts.h"

#include <array>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "migrate/reportmembers.h"
#include "migrate/storedtext.h"

namespace quillet::migrate {

namespace {

using nlohmann::json;

// Where a member goes that is a text or a number; nowhere when both are null.
template <class Facts>
struct Place {
    std::string_view name;
    std::string Facts::*pText = nullptr;
    std::int64_t Facts::*pNumber = nullptr;
};

constexpr std::array<Place<CommandFacts>, 12> kCommandPlaces = {{
    {"type", &CommandFacts::type},
    {"outcome", &CommandFacts::outcome},
    {"firstLine", nullptr, &CommandFacts::firstLine},
    {"lastLine", nullptr, &CommandFacts::lastLine},
    {"source", &CommandFacts::source},
    {"generated", &CommandFacts::generated},
    {"generatedLine", nullptr, &CommandFacts::generatedLine},
    {"error", &CommandFacts::error},
    {"errorLine", nullptr, &CommandFacts::errorLine},
    {"errorColumn", nullptr, &CommandFacts::errorColumn},
    {"message", &CommandFacts::message},
    {"hint", &CommandFacts::hint},
}};

constexpr std::array<Place<FindingFacts>, 8> kFindingPlaces = {{
    {"code", &FindingFacts::code},
    {"kind", &FindingFacts::kind},
    {"command", &FindingFacts::command},
    {"firstLine", nullptr, &FindingFacts::firstLine},
    {"lastLine", nullptr, &FindingFacts::lastLine},
    {"causeLine", nullptr, &FindingFacts::causeLine},
    {"sentence", &FindingFacts::sentence},
    {"text", &FindingFacts::text},
}};

template <class Facts, std::size_t kCount>
Place<Facts> FindPlace(const std::array<Place<Facts>, kCount>& places, std::string_view name) {
    for (const Place<Facts>& place : places) {
        if (place.name == name) return place;
    }
    return {};
}

Place<CommandFacts> PlaceIn(const CommandFacts& /*facts*/, std::string_view name) {
    return FindPlace(kCommandPlaces, name);
}
Place<FindingFacts> PlaceIn(const FindingFacts& /*facts*/, std::string_view name) {
    return FindPlace(kFindingPlaces, name);
}

void AddText(const std::string& text, CommandFacts& facts) { facts.warnings.push_back(text); }
void AddText(const std::string& /*text*/, FindingFacts& /*facts*/) {}

// Takes the parser's events for an array of objects that are `part`, so that no tree is made of
// them: a report tells of more commands than a migration takes time for otherwise. The file may
// have been written to since it was first read, so all is looked at again.
template <class Facts>
class FactsReader final : public nlohmann::json_sax<json> {
public:
    FactsReader(ReportPart part, const std::function<void(const Facts&)>& take)
        : m_part(part), m_take(take) {}

    bool null() override { return TakeValue(nullptr); }
    bool boolean(bool value) override { return TakeValue(value); }
    bool number_integer(number_integer_t value) override { return TakeValue(value); }
    bool number_unsigned(number_unsigned_t value) override { return TakeValue(value); }
    bool number_float(number_float_t value, const string_t& /*text*/) override {
        return TakeValue(value);
    }
    bool string(string_t& value) override { return TakeValue(std::move(value)); }
    bool binary(binary_t& /*value*/) override { return false; }
    bool start_array(std::size_t /*size*/) override { return Enter(json::array()); }
    bool start_object(std::size_t /*size*/) override { return Enter(json::object()); }
    bool end_array() override {
        --m_depth;
        return true;
    }
    bool end_object() override {
        if (--m_depth == kInArray) m_take(m_facts);
        return true;
    }
    bool key(string_t& name) override {
        if (m_depth != kInObject) return true;
        m_pMember = FindMember(m_part, name);
        m_place = PlaceIn(m_facts, name);
        return true;
    }
    bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                     const json::exception& /*exception*/) override {
        return false;
    }

private:
    // How many brackets are open.
    static constexpr std::size_t kOutside = 0;
    static constexpr std::size_t kInArray = 1;
    static constexpr std::size_t kInObject = 2;
    static constexpr std::size_t kInMember = 3;

    // What is known about a value that begins inside of an object.
    [[nodiscard]] Member NextMember() const {
        if (m_pMember == nullptr || m_depth > kInMember) return {};
        return m_depth == kInMember ? ElementOf(m_pMember->inner) : *m_pMember;
    }

    bool TakeValue(json value) {
        if (m_depth < kInObject || !ProblemOf(NextMember().kind, value).empty()) return false;
        if (m_depth == kInObject) {
            if (m_place.pText != nullptr && value.is_string()) {
                m_facts.*m_place.pText = std::move(value.get_ref<std::string&>());
            } else if (m_place.pNumber != nullptr) {
                m_facts.*m_place.pNumber = value.get<std::int64_t>();
            }
        } else if (m_pMember != nullptr && m_pMember->inner == ReportPart::kWarnings) {
            AddText(value.get_ref<const std::string&>(), m_facts);
        }
        return true;
    }

    // `empty` is an object or an array.
    bool Enter(const json& empty) {
        switch (m_depth) {
            case kOutside:
                if (!empty.is_array()) return false;
                break;
            case kInArray:
                if (!empty.is_object()) return false;
                m_facts = {};
                break;
            default:
                if (!ProblemOf(NextMember().kind, empty).empty()) return false;
        }
        ++m_depth;
        return true;
    }

    ReportPart m_part;
    const std::function<void(const Facts&)>& m_take;
    Facts m_facts;
    std::size_t m_depth = kOutside;
    const Member* m_pMember = nullptr;  // of the object, the one that was named last
    Place<Facts> m_place;               // where that goes
};

template <class Facts>
bool ForEachObject(const ArrayPlace& place, ReportPart part,
                   const std::function<void(const Facts&)>& take) {
    if (place.pFile == nullptr) return true;
    StoredText text(*place.pFile, place.offset, place.offset + place.length);
    FactsReader<Facts> reader(part, take);
    return json::sax_parse(StoredTextIterator(&text), StoredTextIterator(), &reader) &&
           !text.Failed();
}

}  // namespace

bool ForEachCommand(const ArrayPlace& place, const std::function<void(const CommandFacts&)>& take) {
    return ForEachObject(place, ReportPart::kCommand, take);
}

bool ForEachFinding(const ArrayPlace& place, const std::function<void(const FindingFacts&)>& take) {
    return ForEachObject(place, ReportPart::kFinding, take);
}

namespace {

// Counts a call, or what else stands as deep in a macro.
void CountCall(const json& call, MacroFacts& macro) {
    const auto outcome = call.find("outcome");
    if (outcome == call.end()) return;
    ++macro.calls;
    if (*outcome == "converted") ++macro.converted;
    if (*outcome == "failed") ++macro.failed;
    if (*outcome == "left") ++macro.left;
}

}  // namespace

// The parser looks through all elements that an array has so far whenever one ends, so none is
// kept.
bool ForEachMacro(const ArrayPlace& place, const std::function<void(const MacroFacts&)>& take) {
    if (place.pFile == nullptr) return true;
    constexpr int kMacros = 1;  // how deep they stand
    constexpr int kCalls = 3;
    StoredText text(*place.pFile, place.offset, place.offset + place.length);
    MacroFacts macro;
    bool isValid = true;
    try {
        const auto takeAndDrop = [&](int depth, json::parse_event_t event, json& value) {
            // What a call gives can be large, and nobody asks for it here.
            if (depth > kCalls && event == json::parse_event_t::key) return value == "outcome";
            if (event != json::parse_event_t::object_end) return true;
            if (depth == kCalls) CountCall(value, macro);
            if (depth == kMacros) {
                const auto name = value.find("name");
                isValid = isValid && name != value.end() && name->is_string();
                if (isValid) {
                    macro.name = *name;
                    take(macro);
                }
                macro = {};
            }
            return depth != kCalls && depth != kMacros;
        };
        const json rest = json::parse(StoredTextIterator(&text), StoredTextIterator(), takeAndDrop);
        return isValid && rest.is_array() && !text.Failed();
    } catch (const json::exception&) {
        return false;
    }
}

}  // namespace quillet::migrate
