// New bodies are proposed by rules of thumb and proven by running them: every call is expanded with
// the old and with the new body, and both results are compared as the converter leaves them.
#include "driver/macrobodies.h"

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "driver/bodyproof.h"
#include "driver/bodyrewriter.h"
#include "driver/convertedcommands.h"
#include "driver/macroscene.h"
#include "driver/stringstreams.h"
#include "driver/textencoding.h"
#include "macro/expandfile.h"
#include "macro/lexer.h"
#include "platform/assertion.h"
#include "platform/multibyte.h"

namespace quillet {

namespace {

using macro::Lexer;
using macro::Token;
using macro::TokenKind;

constexpr int kMostAttempts = 6;
constexpr std::size_t kMostLevels = 4;

std::string_view LineBreakIn(std::string_view text) {
    const std::size_t lineFeed = text.find('\n');
    if (lineFeed == std::string_view::npos) {
        return text.find('\r') == std::string_view::npos ? "\n" : "\r";
    }
    return lineFeed > 0 && text[lineFeed - 1] == '\r' ? "\r\n" : "\n";
}

class IncludeAnswers final : public macro::IncludeResolver {
public:
    explicit IncludeAnswers(const MacroOptions& options) : m_options(options) {}

    bool Find(std::string_view path, const std::string& includingFile,
              macro::IncludedFile& file) override {
        IncludedText include;
        if (!m_options.findInclude || !m_options.findInclude(path, includingFile, include)) {
            return false;
        }
        file.name = std::move(include.name);
        file.text = std::move(include.text);
        file.layout.batchMode = include.batchMode;
        return true;
    }

private:
    const MacroOptions& m_options;
};

// The names in a text outside of literals and comments, in capitals.
template <typename Take>
void ForEachName(const CodePage& codePage, std::string_view text, const Take& take) {
    const Lexer lexer(codePage, text);
    for (Token token = lexer.NextToken(0); token.kind != TokenKind::kEnd;
         token = lexer.NextToken(token.end)) {
        if (token.kind == TokenKind::kIdentifier || token.kind == TokenKind::kMacroWord) {
            take(macro::Capitals(codePage, lexer.TextOf(token)));
        }
    }
}

class BodyConverter {
public:
    BodyConverter(std::string_view text, const MacroOptions& options,
                  const std::vector<OutsideCalls>& outsideCalls, const ChangeBody& changeBody,
                  const macro::Limits& limits, const CodePage& codePage)
        : m_text(text),
          m_lineBreak(LineBreakIn(text)),
          m_options(options),
          m_outsideCalls(outsideCalls),
          m_changeBody(changeBody),
          m_limits(limits),
          m_codePage(codePage),
          m_includes(options),
          m_findUse([this](std::string_view word) { return UseOf(word); }) {}

    MacroBodies Run() {
        ReadDefinitions();
        FindBodies();
        MacroBodies result;
        result.text = m_text;
        if (m_bodies.empty()) return result;
        MakeScenes();
        if (CanTrace()) {
            ReadOldScenes();
            FindReached();
            Trace();
            TellOfBodiesWithoutCalls();
            ProveLevelByLevel();
            ProveTogether();
            result.text = m_scenes.front().scene.TextWith(Accepted());
        }
        for (Body& body : m_bodies) result.bodies.push_back(std::move(body.verdict));
        return result;
    }

private:
    enum class State { kOpen, kAccepted, kRejected };

    // A definition with legacy commands.
    struct Body {
        std::size_t definition = 0;
        MacroBody verdict;
        std::unique_ptr<BodyRewriter> rewriter;
        State state = State::kOpen;
        bool isInWork = false;
        std::string newBody;
        std::size_t level = 0;
    };

    // A command with calls, and what it has to come to.
    struct Place {
        std::vector<std::size_t> bodies;  // that its calls come to
        const OutsideCall* pOutside = nullptr;
        bool isRead = false;
        ConvertedCommands expected{};
    };

    struct Scene {
        MacroScene scene;
        const OutsideCalls* pOutside = nullptr;
        bool batchMode = false;
        std::vector<std::size_t> callBegins{};  // where the outside calls begin
        ExpandedScene old{};
        std::vector<Place> places{};  // one for each command of `old`
    };

    [[nodiscard]] macro::ExpansionOptions ExpansionOptionsFor(bool batchMode) const {
        macro::ExpansionOptions options;
        options.pCodePage = &m_codePage;
        options.layout.batchMode = batchMode;
        options.limits = m_limits;
        options.fileName = m_options.name;
        return options;
    }

    void ReadDefinitions() {
        const bool batchMode = m_options.conversion.batchMode;
        m_definitions =
            macro::ExpandFile(m_text, ExpansionOptionsFor(batchMode), &m_includes).definitions;
        for (std::size_t i = 0; i < m_definitions.size(); ++i) {
            const macro::Definition& definition = m_definitions[i];
            const std::string name = macro::Capitals(m_codePage, definition.name);
            m_byName[name].push_back(i);
            if (!definition.macro->list.arguments.empty()) m_withArguments.insert(name);
        }
    }

    [[nodiscard]] MacroNameUse UseOf(std::string_view word) const {
        const std::string name = macro::Capitals(m_codePage, word);
        if (!m_byName.contains(name)) return MacroNameUse::kNone;
        return m_withArguments.contains(name) ? MacroNameUse::kWithArguments : MacroNameUse::kPlain;
    }

    void FindBodies() {
        const bool batchMode = m_options.conversion.batchMode;
        for (std::size_t i = 0; i < m_definitions.size(); ++i) {
            const macro::Definition& definition = m_definitions[i];
            auto rewriter =
                std::make_unique<BodyRewriter>(*definition.macro, m_codePage, batchMode, m_findUse);
            if (rewriter->RegionCount() == 0) continue;
            Body body;
            body.definition = i;
            body.rewriter = std::move(rewriter);
            body.verdict.name = definition.name;
            body.verdict.firstLine = definition.firstLine;
            body.verdict.lastLine = definition.lastLine;
            body.verdict.legacyCommands = static_cast<long>(body.rewriter->RegionCount());
            m_bodies.push_back(std::move(body));
        }
    }

    void MakeScenes() {
        const bool batchMode = m_options.conversion.batchMode;
        Scene own{MacroScene(ExpansionOptionsFor(batchMode), &m_includes), nullptr, batchMode};
        std::size_t written = 0;
        for (std::size_t i = 0; i < m_definitions.size(); ++i) {
            const macro::Definition& definition = m_definitions[i];
            own.scene.Add(m_text.substr(written, definition.bodyBegin - written));
            own.scene.AddBody(i, BodyText(definition));
            written = definition.bodyEnd;
        }
        own.scene.Add(m_text.substr(written));
        m_scenes.push_back(std::move(own));
        for (const OutsideCalls& calls : m_outsideCalls) AddScene(calls);
    }

    [[nodiscard]] std::string_view BodyText(const macro::Definition& definition) const {
        return m_text.substr(definition.bodyBegin, definition.bodyEnd - definition.bodyBegin);
    }

    void AddScene(const OutsideCalls& calls) {
        Scene scene{MacroScene(ExpansionOptionsFor(calls.batchMode), &m_includes), &calls,
                    calls.batchMode};
        const std::string lineBreak(m_lineBreak);
        scene.scene.Add(calls.before + lineBreak);
        for (std::size_t i = 0; i < m_definitions.size(); ++i) {
            const macro::Definition& definition = m_definitions[i];
            scene.scene.Add(
                m_text.substr(definition.begin, definition.bodyBegin - definition.begin));
            scene.scene.AddBody(i, BodyText(definition));
            scene.scene.Add("!ENDDEFINE." + lineBreak);
        }
        scene.scene.Add(calls.after + lineBreak);
        for (const OutsideCall& call : calls.calls) {
            scene.callBegins.push_back(scene.scene.Size());
            scene.scene.Add(call.command);
            const std::size_t last = call.command.find_last_not_of(" \t\r\n");
            const bool isEnded = last != std::string::npos && call.command[last] == '.';
            if (!isEnded && !calls.batchMode) scene.scene.Add(" .");
            scene.scene.Add(lineBreak);
        }
        m_scenes.push_back(std::move(scene));
    }

    // Marks must not stand in the texts already.
    [[nodiscard]] bool CanTrace() {
        const BodyReplacements none(m_definitions.size());
        for (const Scene& scene : m_scenes) {
            if (scene.scene.TextWith(none).find_first_of(kTraceBytes) == std::string::npos)
                continue;
            for (Body& body : m_bodies) {
                body.verdict.outcome = MacroBodyOutcome::kNotConvertible;
                body.verdict.reason = "the text holds control characters";
            }
            return false;
        }
        return true;
    }

    void ReadOldScenes() {
        const BodyReplacements none(m_definitions.size());
        for (Scene& scene : m_scenes) {
            scene.old = scene.scene.ExpandWith(none);
            scene.places.resize(scene.old.commands.size());
            for (std::size_t i = 0; i < scene.places.size(); ++i) {
                scene.places[i].pOutside = OutsideCallAt(scene, scene.old.commands[i].begin);
            }
        }
    }

    static const OutsideCall* OutsideCallAt(const Scene& scene, std::size_t position) {
        const auto next =
            std::upper_bound(scene.callBegins.begin(), scene.callBegins.end(), position);
        if (next == scene.callBegins.begin()) return nullptr;
        const auto index = static_cast<std::size_t>(next - scene.callBegins.begin()) - 1;
        return &scene.pOutside->calls[index];
    }

    // Which bodies each definition comes to by names that stand in it, directly or through others.
    void FindReached() {
        std::vector<std::vector<std::size_t>> users(m_definitions.size());
        for (std::size_t i = 0; i < m_definitions.size(); ++i) {
            const macro::Definition& definition = m_definitions[i];
            const std::string_view source =
                m_text.substr(definition.begin, definition.bodyEnd - definition.begin);
            ForEachName(m_codePage, source, [&](const std::string& name) {
                const auto known = m_byName.find(name);
                if (known == m_byName.end() || known->second.size() > kMostUses) return;
                for (const std::size_t used : known->second) users[used].push_back(i);
            });
        }
        m_reached.resize(m_definitions.size());
        std::size_t steps = 0;
        std::vector<std::size_t> seenFor(m_definitions.size(), macro::kNowhere);
        for (std::size_t number = 0; number < m_bodies.size(); ++number) {
            std::vector<std::size_t> open = {m_bodies[number].definition};
            seenFor[open.front()] = number;
            while (!open.empty()) {
                const std::size_t definition = open.back();
                open.pop_back();
                m_reached[definition].push_back(number);
                for (const std::size_t user : users[definition]) {
                    if (seenFor[user] == number) continue;
                    seenFor[user] = number;
                    open.push_back(user);
                }
                if (++steps > kMostSteps) return Reject("too many macros call one another");
            }
        }
        FindLevels();
        FindPlaces();
    }

    // A body that comes to others is looked at after them.
    void FindLevels() {
        for (std::size_t round = 0; round + 1 < kMostLevels; ++round) {
            for (std::size_t number = 0; number < m_bodies.size(); ++number) {
                Body& body = m_bodies[number];
                for (const std::size_t other : m_reached[body.definition]) {
                    if (other == number) continue;
                    const std::size_t least = m_bodies[other].level + 1;
                    body.level = std::max(body.level, std::min(least, kMostLevels - 1));
                }
            }
        }
    }

    void FindPlaces() {
        std::unordered_map<const macro::Macro*, std::size_t> definitionOf;
        for (Scene& scene : m_scenes) {
            definitionOf.clear();
            for (std::size_t i = 0, own = 0; i < scene.old.expansion.definitions.size(); ++i) {
                own = OwnDefinition(scene, i);
                if (own != macro::kNowhere) {
                    definitionOf[scene.old.expansion.definitions[i].macro.get()] = own;
                }
            }
            for (std::size_t i = 0; i < scene.places.size(); ++i) {
                const CallingCommand& command = scene.old.commands[i];
                std::vector<std::size_t>& bodies = scene.places[i].bodies;
                for (std::size_t k = command.firstCall; k < command.lastCall; ++k) {
                    const macro::Call& call = scene.old.expansion.calls[k];
                    const auto known = definitionOf.find(call.macro.get());
                    if (known != definitionOf.end()) AddReached(known->second, bodies);
                }
                AddNamedInArguments(scene, command, bodies);
                MakeUnique(bodies);
            }
        }
    }

    // The number that a definition of a scene has in the text; none for those of others.
    [[nodiscard]] std::size_t OwnDefinition(const Scene& scene, std::size_t index) const {
        if (scene.pOutside == nullptr) return index;
        if (!m_ownBegins.contains(&scene)) {
            // Those of the text follow those that come before it.
            std::size_t count = 0;
            const std::size_t begin = scene.pOutside->before.size();
            for (const macro::Definition& definition : scene.old.expansion.definitions) {
                if (definition.begin < begin) ++count;
            }
            m_ownBegins[&scene] = count;
        }
        const std::size_t first = m_ownBegins[&scene];
        const bool isOwn = index >= first && index - first < m_definitions.size();
        return isOwn ? index - first : macro::kNowhere;
    }

    void AddReached(std::size_t definition, std::vector<std::size_t>& bodies) const {
        const std::vector<std::size_t>& reached = m_reached[definition];
        bodies.insert(bodies.end(), reached.begin(), reached.end());
    }

    // A call may stand in an argument of another one.
    void AddNamedInArguments(const Scene& scene, const CallingCommand& command,
                             std::vector<std::size_t>& bodies) const {
        for (std::size_t k = command.firstCall; k < command.lastCall; ++k) {
            const macro::Call& call = scene.old.expansion.calls[k];
            const std::size_t begin = std::min(call.begin + call.name.size(), call.end);
            const std::string arguments = scene.old.text.substr(begin, call.end - begin);
            ForEachName(m_codePage, arguments, [&](const std::string& name) {
                const auto known = m_byName.find(name);
                if (known == m_byName.end()) return;
                const std::size_t most = std::min(known->second.size(), kMostUses);
                for (std::size_t i = 0; i < most; ++i) AddReached(known->second[i], bodies);
            });
        }
    }

    static void MakeUnique(std::vector<std::size_t>& numbers) {
        std::sort(numbers.begin(), numbers.end());
        numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    }

    // Expands all calls with marked bodies, which tells what the calls put in where.
    void Trace() {
        std::vector<std::string> marked(m_bodies.size());
        BodyReplacements bodies(m_definitions.size());
        for (std::size_t number = 0; number < m_bodies.size(); ++number) {
            marked[number] = InFile(m_bodies[number].rewriter->MarkedBody(number));
            bodies[m_bodies[number].definition] = &marked[number];
        }
        for (Scene& scene : m_scenes) {
            const ExpandedScene traced = scene.scene.ExpandWith(bodies);
            if (traced.commands.size() != scene.places.size()) continue;
            for (std::size_t i = 0; i < scene.places.size(); ++i) {
                const CallingCommand& command = traced.commands[i];
                for (std::size_t k = command.firstCall; k < command.lastCall; ++k) {
                    ReadTrace(traced.expansion.calls[k].text, scene.places[i].bodies);
                }
                MakeUnique(scene.places[i].bodies);
            }
        }
    }

    // A legacy command: the body and the number of the command in it.
    using RegionPlace = std::pair<std::size_t, std::size_t>;

    // What is being read of the trace of one call.
    struct OpenSite {
        std::size_t place = macro::kNowhere;  // none: a mark without a value
        std::string value;
    };
    struct CallTrace {
        std::vector<OpenSite> open;
        std::optional<RegionPlace> region;
        SiteValues values;                // of the region
        std::vector<std::size_t> called;  // bodies
    };

    void ReadTrace(std::string_view text, std::vector<std::size_t>& bodies) {
        CallTrace trace;
        std::size_t position = 0;
        while (position < text.size()) {
            const std::size_t mark =
                std::min(text.find_first_of(kTraceBytes, position), text.size());
            if (!trace.open.empty()) {
                AddToValue(trace.open.back().value, text.substr(position, mark - position));
            }
            position = mark + 1;
            if (text.substr(mark).starts_with('\x03')) {
                CloseMark(trace);
            } else if (text.substr(mark).starts_with('\x01')) {
                const std::size_t end = std::min(text.find('\x02', position), text.size());
                OpenMark(text.substr(position, end - position), trace);
                position = end + 1;
            }
        }
        FinishRegion(trace);
        CountCall(trace.called, bodies);
    }

    void OpenMark(std::string_view name, CallTrace& trace) {
        trace.open.emplace_back();
        if (name.starts_with('S')) trace.open.back().place = NumberAt(name, 1);
        if (name.starts_with('B')) trace.called.push_back(NumberAt(name, 1));
        if (!name.starts_with('R')) return;
        FinishRegion(trace);
        trace.region = {NumberAt(name, 1), NumberAt(name, name.find('.') + 1)};
    }

    void CloseMark(CallTrace& trace) {
        if (trace.open.empty()) return;
        OpenSite site = std::move(trace.open.back());
        trace.open.pop_back();
        if (!trace.open.empty()) AddToValue(trace.open.back().value, site.value);
        if (site.place == macro::kNowhere || !trace.region) return;
        KeepValue(*trace.region, site);
        trace.values[site.place] = std::move(site.value);
    }

    void FinishRegion(CallTrace& trace) {
        if (trace.region) KeepInstance(*trace.region, trace.values);
        trace.values.clear();
    }

    // A long value tells as much by its beginning.
    static void AddToValue(std::string& value, std::string_view text) {
        constexpr std::size_t kLongestValue = 1024;
        if (value.size() < kLongestValue) value += text.substr(0, kLongestValue - value.size());
    }

    static std::size_t NumberAt(std::string_view text, std::size_t position) {
        std::size_t number = 0;
        for (; position < text.size() && macro::IsDigit(text[position]); ++position) {
            number = number * 10 + static_cast<std::size_t>(text[position] - '0');
        }
        return number;
    }

    void CountCall(std::vector<std::size_t>& called, std::vector<std::size_t>& bodies) {
        MakeUnique(called);
        for (const std::size_t number : called) {
            if (number >= m_bodies.size()) continue;
            ++m_bodies[number].verdict.calls;
            bodies.push_back(number);
        }
    }

    [[nodiscard]] RegionTrace* TraceOf(std::size_t body, std::size_t region) {
        if (body >= m_bodies.size()) return nullptr;
        BodyRewriter& rewriter = *m_bodies[body].rewriter;
        return region < rewriter.RegionCount() ? &rewriter.TraceOf(region) : nullptr;
    }

    void KeepValue(const RegionPlace& region, const OpenSite& site) {
        constexpr std::size_t kMostValues = 64;
        RegionTrace* pTrace = TraceOf(region.first, region.second);
        if (pTrace == nullptr) return;
        std::set<std::string>& values = pTrace->siteValues[site.place];
        if (values.size() < kMostValues) values.insert(site.value);
    }

    void KeepInstance(const RegionPlace& region, const SiteValues& values) {
        RegionTrace* pTrace = TraceOf(region.first, region.second);
        if (pTrace == nullptr) return;
        ++pTrace->runs;
        if (pTrace->instances.size() < kMostInstances) pTrace->instances.insert(values);
    }

    [[nodiscard]] std::string InFile(const std::string& body) const {
        if (m_lineBreak == "\n") return body;
        std::string result;
        for (const char byte : body) {
            if (byte == '\n') {
                result += m_lineBreak;
            } else {
                result += byte;
            }
        }
        return result;
    }

    void TellOfBodiesWithoutCalls() {
        for (Body& body : m_bodies) {
            body.verdict.unusedCommands = body.rewriter->CountUnused();
            if (body.state != State::kOpen) continue;
            if (body.verdict.unusedCommands < body.verdict.legacyCommands) continue;
            body.state = State::kRejected;
            body.verdict.outcome = MacroBodyOutcome::kNoCall;
            body.verdict.reason = body.verdict.calls == 0
                                      ? "no call of it is known"
                                      : "no call comes to one of its legacy commands";
        }
        // A call that cannot be expanded or converted says more.
        for (Scene& scene : m_scenes) {
            for (std::size_t i = 0; i < scene.places.size(); ++i) {
                if (scene.places[i].bodies.empty()) continue;
                TellOfFaults(scene, i);
                ReadExpected(scene, i);
                const ConvertedCommands& expected = scene.places[i].expected;
                if (expected.hasFailed) {
                    RejectAll(scene, i, "is not converted: " + expected.failure);
                }
            }
        }
    }

    void TellOfFaults(const Scene& scene, std::size_t index) {
        const CallingCommand& command = scene.old.commands[index];
        for (std::size_t k = command.firstCall; k < command.lastCall; ++k) {
            const macro::Call& call = scene.old.expansion.calls[k];
            if (!call.fault) continue;
            RejectAll(scene, index, "cannot be expanded: " + ReasonText(*call.fault));
        }
    }

    // For what is wrong with a call as it is. The first call counts.
    void RejectAll(const Scene& scene, std::size_t index, const std::string& reason) {
        for (const std::size_t number : scene.places[index].bodies) {
            if (m_bodies[number].verdict.outcome == MacroBodyOutcome::kDisproved) continue;
            m_bodies[number].state = State::kRejected;
            Disprove(m_bodies[number], scene, index, reason, {});
        }
    }

    void ReadExpected(Scene& scene, std::size_t index) {
        Place& place = scene.places[index];
        if (place.isRead) return;
        const std::string text = scene.old.Expanded(scene.old.commands[index]);
        place.expected = ConvertCommands(text, m_codePage, scene.batchMode);
        place.isRead = true;
    }

    void ProveLevelByLevel() {
        for (std::size_t level = 0; level < kMostLevels; ++level) {
            for (int attempt = 0; attempt < kMostAttempts && m_work < kMostWork; ++attempt) {
                bool isAny = false;
                for (Body& body : m_bodies) {
                    body.isInWork =
                        body.state == State::kOpen && body.level == level && Propose(body, attempt);
                    isAny = isAny || body.isInWork;
                }
                if (!isAny) break;
                Prove();
            }
            for (Body& body : m_bodies) {
                if (body.level != level || body.state != State::kOpen) continue;
                body.state = State::kRejected;
                if (body.verdict.outcome == MacroBodyOutcome::kDisproved) continue;
                body.verdict.outcome = MacroBodyOutcome::kNotConvertible;
                body.verdict.reason = "its proof takes too much work";
            }
        }
    }

    // A new body for the next proof. False when there is none.
    bool Propose(Body& body, int attempt) {
        std::string reason;
        std::optional<std::string> text = body.rewriter->Rewrite(attempt, reason);
        if (text) {
            if (m_changeBody) m_changeBody(*text);
            body.newBody = InFile(*text);
            return true;
        }
        body.state = State::kRejected;
        if (attempt == 0) {
            body.verdict.outcome = MacroBodyOutcome::kNotConvertible;
            body.verdict.reason = std::move(reason);
        }
        return false;
    }

    [[nodiscard]] BodyReplacements Accepted() const {
        BodyReplacements bodies(m_definitions.size());
        for (const Body& body : m_bodies) {
            if (body.state == State::kAccepted || body.isInWork) {
                bodies[body.definition] = &body.newBody;
            }
        }
        return bodies;
    }

    // Accepts those bodies in work that no call disproves.
    void Prove() {
        std::vector<bool> isWrong(m_bodies.size());
        CheckAll(/*onlyInWork=*/true, isWrong);
        for (std::size_t number = 0; number < m_bodies.size(); ++number) {
            Body& body = m_bodies[number];
            if (!body.isInWork) continue;
            body.isInWork = false;
            if (isWrong[number]) continue;
            body.state = State::kAccepted;
            MacroBody& verdict = body.verdict;
            verdict.outcome = MacroBodyOutcome::kConverted;
            verdict.reason.clear();
            verdict.callFile.clear();
            verdict.callLine = 0;
            verdict.expected.clear();
            verdict.found.clear();
        }
    }

    // Bodies that were accepted at different times have to be right together.
    void ProveTogether() {
        while (true) {
            std::vector<bool> isWrong(m_bodies.size());
            CheckAll(/*onlyInWork=*/false, isWrong);
            bool isAnyWrong = false;
            for (std::size_t number = 0; number < m_bodies.size(); ++number) {
                if (!isWrong[number]) continue;
                m_bodies[number].state = State::kRejected;
                isAnyWrong = true;
            }
            if (!isAnyWrong) return;
            if (++m_rounds == kMostRounds) return Reject("its calls also come to other macros");
        }
    }

    void CheckAll(bool onlyInWork, std::vector<bool>& isWrong) {
        const BodyReplacements bodies = Accepted();
        for (Scene& scene : m_scenes) {
            const ExpandedScene changed = scene.scene.ExpandWith(bodies);
            m_work += changed.text.size();
            for (const macro::Call& call : changed.expansion.calls) m_work += call.text.size();
            for (std::size_t i = 0; i < scene.places.size(); ++i) {
                Check(scene, i, changed, onlyInWork, isWrong);
            }
        }
    }

    void Check(Scene& scene, std::size_t index, const ExpandedScene& changed, bool onlyInWork,
               std::vector<bool>& isWrong) {
        Place& place = scene.places[index];
        std::vector<std::size_t> checked;
        bool isWhole = true;
        for (const std::size_t number : place.bodies) {
            const Body& body = m_bodies[number];
            const bool isNew = body.isInWork || body.state == State::kAccepted;
            if (!isNew || body.verdict.unusedCommands > 0) isWhole = false;
            if (onlyInWork ? body.isInWork : isNew) checked.push_back(number);
        }
        if (checked.empty()) return;
        std::string reason;
        std::optional<TextDifference> difference;
        if (IsSame(scene, index, changed, isWhole, reason, difference)) return;
        for (const std::size_t number : checked) {
            if (!isWrong[number]) Disprove(m_bodies[number], scene, index, reason, difference);
            isWrong[number] = true;
        }
    }

    bool IsSame(Scene& scene, std::size_t index, const ExpandedScene& changed, bool isWhole,
                std::string& reason, std::optional<TextDifference>& difference) {
        ReadExpected(scene, index);
        if (changed.commands.size() != scene.places.size()) {
            reason = "is no command of its own any more";
            return false;
        }
        const CallingCommand& after = changed.commands[index];
        for (std::size_t k = after.firstCall; k < after.lastCall; ++k) {
            const std::optional<macro::Fault>& fault = changed.expansion.calls[k].fault;
            if (!fault) continue;
            reason = "could not be expanded any more: " + ReasonText(*fault);
            return false;
        }
        const ConvertedCommands found =
            ConvertCommands(changed.Expanded(after), m_codePage, scene.batchMode);
        if (found.hasFailed || (isWhole && found.legacyCommands > 0)) {
            reason = "would still hold a legacy command or could not be read any more";
            return false;
        }
        difference = FindDifference(scene.places[index].expected, found, m_codePage);
        if (difference) reason = "would give something else";
        return !difference;
    }

    static void Disprove(Body& body, const Scene& scene, std::size_t index,
                         const std::string& reason,
                         const std::optional<TextDifference>& difference) {
        const Place& place = scene.places[index];
        const CallingCommand& command = scene.old.commands[index];
        MacroBody& verdict = body.verdict;
        verdict.outcome = MacroBodyOutcome::kDisproved;
        verdict.callFile = place.pOutside != nullptr ? place.pOutside->file : "";
        verdict.callLine = place.pOutside != nullptr
                               ? place.pOutside->line
                               : scene.old.expansion.calls[command.firstCall].line;
        verdict.reason = "the call on line " + std::to_string(verdict.callLine) +
                         (verdict.callFile.empty() ? "" : " of " + verdict.callFile) + " " + reason;
        verdict.expected = difference ? difference->expected : "";
        verdict.found = difference ? difference->found : "";
    }

    void Reject(const std::string& reason) {
        for (Body& body : m_bodies) {
            if (body.state == State::kRejected) continue;
            body.state = State::kRejected;
            body.verdict.outcome = MacroBodyOutcome::kNotConvertible;
            body.verdict.reason = reason;
        }
    }

    static constexpr std::size_t kMostUses = 64;  // of one name, by several definitions
    static constexpr std::size_t kMostSteps = 4'000'000;
    static constexpr int kMostRounds = 4;
    static constexpr std::size_t kMostWork = std::size_t{512} * 1024 * 1024;

    std::string_view m_text;
    std::string_view m_lineBreak;
    const MacroOptions& m_options;
    const std::vector<OutsideCalls>& m_outsideCalls;
    const ChangeBody& m_changeBody;
    const macro::Limits& m_limits;
    const CodePage& m_codePage;
    IncludeAnswers m_includes;
    FindMacroNameUse m_findUse;

    std::vector<macro::Definition> m_definitions;
    std::unordered_map<std::string, std::vector<std::size_t>> m_byName;
    std::unordered_set<std::string> m_withArguments;  // names of macros
    std::vector<Body> m_bodies;
    std::vector<std::vector<std::size_t>> m_reached;  // the bodies that a definition comes to
    std::vector<Scene> m_scenes;                      // the text's own is the first
    mutable std::unordered_map<const Scene*, std::size_t> m_ownBegins;
    int m_rounds = 0;
    std::size_t m_work = 0;  // bytes that were looked at
};

}  // namespace

MacroBodies ConvertMacroBodies(std::string_view text, const MacroOptions& options,
                               const std::vector<OutsideCalls>& outsideCalls,
                               const ChangeBody& changeBody, const macro::Limits& limits) {
    const ScopedAssertionHandler handler(TellNobody);
    StringInput input(text);
    const CodePage* pCodePage = ChooseCodePage(input, options.conversion);
    if (pCodePage == nullptr) return {std::string(text), {}};
    return BodyConverter(text, options, outsideCalls, changeBody, limits, *pCodePage).Run();
}

MacroBodies ConvertMacroBodies(std::string_view text, const MacroOptions& options,
                               const std::vector<OutsideCalls>& outsideCalls) {
    return ConvertMacroBodies(text, options, outsideCalls, /*changeBody=*/{});
}

}  // namespace quillet
