// The reference for designers against the type libraries in the server: every member, event and enumerated value with
// its number, both ways. What stands in the tables of docs/reference*.md is brought into the same lines of text as what
// the type library says, and the two sets of lines have to be the same.
#include <gtest/gtest.h>
#include <windows.h>

#include <oleauto.h>

#include <Vexa.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "comkit/Bstr.h"
#include "ControlFixture.h"
#include "Server.h"

namespace {

using comkit::ComPtr;
using component::Server;
using Lines = std::set<std::string>;

std::string Narrow(std::u16string_view text) {
    return {text.begin(), text.end()};
}

std::string Joined(const std::vector<std::string>& words) {
    std::string all;
    for (const std::string& word : words) all += (all.empty() ? "" : ", ") + word;
    return all;
}

// --- the type library ------------------------------------------------------------------------------------------------

struct Member {
    long id = 0;
    std::vector<std::string> arguments;
    std::string type;
    bool property = false;
    bool writable = false;
};

/// A type's attributes or a function's description, given back at the end.
template <class Description>
class Described {
public:
    using Release = void (STDMETHODCALLTYPE ITypeInfo::*)(Description*);
    Described(ITypeInfo& type, Release release) : m_type(type), m_release(release) {}
    Described(const Described&) = delete;
    Described& operator=(const Described&) = delete;
    ~Described() {
        if (m_what) (m_type.*m_release)(m_what);
    }
    Description** Put() { return &m_what; }
    const Description* operator->() const { return m_what; }

private:
    ITypeInfo& m_type;
    Release m_release;
    Description* m_what = nullptr;
};

std::string NameOf(ITypeInfo& type, MEMBERID id = MEMBERID_NIL) {
    comkit::Bstr name;
    EXPECT_EQ(S_OK, type.GetDocumentation(id, name.Put(), nullptr, nullptr, nullptr));
    return Narrow(name.View());
}

/// The values of an enumeration, by name.
std::map<std::string, long> ValuesOf(ITypeInfo& type) {
    Described<TYPEATTR> attributes(type, &ITypeInfo::ReleaseTypeAttr);
    EXPECT_EQ(S_OK, type.GetTypeAttr(attributes.Put()));
    std::map<std::string, long> values;
    for (UINT i = 0; i < attributes->cVars; ++i) {
        Described<VARDESC> value(type, &ITypeInfo::ReleaseVarDesc);
        EXPECT_EQ(S_OK, type.GetVarDesc(i, value.Put()));
        values[NameOf(type, value->memid)] = value->lpvarValue->lVal;
    }
    return values;
}

/// The range of an enumeration as the reference writes it.
std::string RangeOf(ITypeInfo& type) {
    std::set<long> numbers;
    for (const auto& [name, number] : ValuesOf(type)) numbers.insert(number);
    const std::string between = numbers.size() == 2 ? ", " : " to ";
    return std::to_string(*numbers.begin()) + between + std::to_string(*numbers.rbegin());
}

/// A property's type in the reference's words.
std::string WordsFor(ITypeInfo& type, const TYPEDESC& description) {
    static const std::map<VARTYPE, std::string> plain{{VARTYPE{VT_I2}, "Integer"},
                                                      {VARTYPE{VT_I4}, "Long"},
                                                      {VARTYPE{VT_BOOL}, "Boolean"},
                                                      {VARTYPE{VT_BSTR}, "string"}};
    if (const auto found = plain.find(description.vt); found != plain.end()) return found->second;
    if (description.vt == VT_PTR) return WordsFor(type, *description.lptdesc);
    if (description.vt == VT_DISPATCH) return "object";
    if (description.vt != VT_USERDEFINED) return "type " + std::to_string(description.vt);
    ComPtr<ITypeInfo> named;
    if (FAILED(type.GetRefTypeInfo(description.hreftype, named.Put()))) return "type unknown";
    Described<TYPEATTR> attributes(*named, &ITypeInfo::ReleaseTypeAttr);
    EXPECT_EQ(S_OK, named->GetTypeAttr(attributes.Put()));
    if (attributes->typekind == TKIND_ENUM) return RangeOf(*named);
    const std::string name = NameOf(*named);
    if (name == "OLE_COLOR") return "colour";
    return name == "IFontDisp" || name == "Font" ? "font" : name;
}

void Add(std::map<std::string, Member>& members, ITypeInfo& type, const FUNCDESC& function) {
    BSTR names[16] = {};
    UINT found = 0;
    EXPECT_EQ(S_OK, type.GetNames(function.memid, names, 16, &found));
    std::vector<std::string> words;
    for (UINT i = 0; i < found; ++i) {
        words.push_back(Narrow(comkit::ViewOf(names[i])));
        SysFreeString(names[i]);
    }
    Member& member = members[words.at(0)];
    member.id = function.memid;
    member.property = function.invkind != INVOKE_FUNC;
    const auto count = static_cast<std::size_t>(function.cParams);
    if (function.invkind & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF)) {
        member.writable = true;
        member.type = WordsFor(type, function.lprgelemdescParam[count - 1].tdesc);
        return;
    }
    const bool returns = count > 0 && (function.lprgelemdescParam[count - 1].paramdesc.wParamFlags & PARAMFLAG_FRETVAL);
    const auto arguments = static_cast<std::ptrdiff_t>(std::min(count - (returns ? 1 : 0), words.size() - 1));
    member.arguments.assign(words.begin() + 1, words.begin() + 1 + arguments);
    if (!member.property) return;
    member.type = WordsFor(type, returns ? function.lprgelemdescParam[count - 1].tdesc : function.elemdescFunc.tdesc);
}

std::map<std::string, Member> MembersOf(ITypeInfo& type) {
    Described<TYPEATTR> attributes(type, &ITypeInfo::ReleaseTypeAttr);
    EXPECT_EQ(S_OK, type.GetTypeAttr(attributes.Put()));
    std::map<std::string, Member> members;
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
        Described<FUNCDESC> function(type, &ITypeInfo::ReleaseFuncDesc);
        EXPECT_EQ(S_OK, type.GetFuncDesc(i, function.Put()));
        // What every dual interface inherits.
        if (!(function->wFuncFlags & FUNCFLAG_FRESTRICTED)) Add(members, type, *function.operator->());
    }
    return members;
}

ComPtr<ITypeLib> Library(const wchar_t* part) {
    ComPtr<ITypeLib> library;
    EXPECT_EQ(S_OK, LoadTypeLibEx((Server::Get().File() + part).c_str(), REGKIND_NONE, library.Put()));
    return library;
}

std::map<std::string, Member> MembersOf(ITypeLib& library, REFIID iid) {
    ComPtr<ITypeInfo> type;
    EXPECT_EQ(S_OK, library.GetTypeInfoOfGuid(iid, type.Put()));
    return MembersOf(*type);
}

// --- the reference ---------------------------------------------------------------------------------------------------

std::string ReadReference(const char* name) {
    std::ifstream file(std::string(KIV_SOURCE_DIR "/docs/") + name, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    EXPECT_FALSE(text.str().empty()) << name;
    return text.str();
}

std::string Trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \r");
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(" \r") - first + 1);
}

std::vector<std::string> CellsOf(const std::string& line) {
    std::vector<std::string> cells;
    std::istringstream stream(line.substr(1));
    for (std::string cell; std::getline(stream, cell, '|');) cells.push_back(Trimmed(cell));
    return cells;
}

/// The numbers of a cell: "-552", "14, 15", "4 to 7".
std::vector<long> NumbersOf(const std::string& cell) {
    std::vector<long> numbers;
    std::istringstream words(cell);
    bool range = false;
    for (std::string word; words >> word;) {
        if (word == "to") {
            range = true;
            continue;
        }
        const long number = std::stol(word);
        while (range && numbers.back() + 1 < number) numbers.push_back(numbers.back() + 1);
        range = false;
        numbers.push_back(number);
    }
    return numbers;
}

struct NamedRow {
    std::string name;
    std::string arguments;  ///< with their parentheses; empty where none stand there
    long number = 0;
    std::string type;
};

/// `Name`, `Name(a)`, and `(a)` behind several names, for all of them.
void AddNames(std::vector<NamedRow>& rows, const std::string& names, const std::vector<long>& numbers,
              const std::string& type) {
    std::vector<NamedRow> added;
    for (std::size_t at = names.find('`'); at != std::string::npos; at = names.find('`', at)) {
        const std::size_t end = names.find('`', at + 1);
        const std::string code = names.substr(at + 1, end - at - 1);
        at = end + 1;
        const std::size_t open = std::min(code.find('('), code.size());
        if (open > 0) added.push_back({code.substr(0, open), code.substr(open), 0, type});
        for (NamedRow& row : added)
            if (open == 0) row.arguments = code;
    }
    ASSERT_EQ(added.size(), numbers.size()) << "as many names as numbers: " << names;
    for (std::size_t i = 0; i < added.size(); ++i) {
        added[i].number = numbers[i];
        rows.push_back(added[i]);
    }
}

/// The rows of the tables whose header has this word for their names, and a column of numbers.
std::vector<NamedRow> RowsOf(const std::string& text, const std::string& what) {
    std::vector<NamedRow> rows;
    std::vector<std::string> header;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        if (!line.starts_with("|")) {
            header.clear();
            continue;
        }
        const std::vector<std::string> cells = CellsOf(line);
        if (header.empty()) {
            header = cells;
            continue;
        }
        const auto column = [&](const std::string& name) {
            return static_cast<std::size_t>(std::find(header.begin(), header.end(), name) - header.begin());
        };
        const std::size_t names = column(what);
        const std::size_t numbers = std::min(column("DISPID"), column("number"));
        const std::size_t type = column("type");
        if (names == header.size() || numbers == header.size() || line.starts_with("|---")) continue;
        AddNames(rows, cells.at(names), NumbersOf(cells.at(numbers)), type < cells.size() ? cells[type] : "");
    }
    EXPECT_FALSE(rows.empty()) << "no table of: " << what;
    return rows;
}

// --- both as lines ---------------------------------------------------------------------------------------------------

Lines InReference(const std::string& text, const std::string& what) {
    Lines lines;
    for (const NamedRow& row : RowsOf(text, what)) {
        std::string type = row.type;
        for (const char* unit : {", twips"})
            if (type.ends_with(unit)) type.resize(type.size() - std::string(unit).size());
        const std::string line = row.name + row.arguments + " " + std::to_string(row.number) + " " + type;
        EXPECT_TRUE(lines.insert(line).second) << "twice: " << line;
    }
    return lines;
}

Lines InLibrary(const std::map<std::string, Member>& members, bool properties) {
    Lines lines;
    for (const auto& [name, member] : members) {
        if (member.property != properties) continue;
        std::string line = name;
        if (!properties || !member.arguments.empty()) line.append("(").append(Joined(member.arguments)).append(")");
        line.append(" ").append(std::to_string(member.id)).append(" ").append(member.type);
        if (properties && !member.writable) line.append(", read only");
        lines.insert(line);
    }
    return lines;
}

struct Documented {
    const char* file;
    const component::TestedClass& tested;
};
const Documented References[] = {{"reference.md", component::SetClass}, {"reference-show.md", component::ShowClass}};

TEST(Reference, HasEveryPropertyAndMethodWithNumberTypeAndArgumentsAndNoOther) {
    const auto library = Library(L"");
    for (const Documented& documented : References) {
        const std::string text = ReadReference(documented.file);
        const auto members = MembersOf(*library, documented.tested.members);
        EXPECT_EQ(InLibrary(members, true), InReference(text, "property")) << documented.file;
        EXPECT_EQ(InLibrary(members, false), InReference(text, "method")) << documented.file;
    }
}

TEST(Reference, HasEveryEventWithNumberAndArgumentsAndNoOther) {
    const auto library = Library(L"");
    for (const Documented& documented : References) {
        const auto events = MembersOf(*library, documented.tested.events);
        EXPECT_EQ(InLibrary(events, false), InReference(ReadReference(documented.file), "event")) << documented.file;
    }
}

TEST(Reference, HasEveryMemberForTheFrameworkWithItsNumberAndNoOther) {
    Lines documented;
    for (const NamedRow& row : RowsOf(ReadReference("reference.md"), "member"))
        documented.insert(row.name + " " + std::to_string(row.number));
    Lines library;
    for (const auto& [name, member] : MembersOf(*Library(L"\\2"), IID_IVexaSupport))
        library.insert(name + " " + std::to_string(member.id));
    EXPECT_EQ(library, documented);
}

TEST(Reference, HasEveryEnumeratedValueAndNoOther) {
    Lines expected;
    const auto library = Library(L"");
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        TYPEKIND kind{};
        ASSERT_EQ(S_OK, library->GetTypeInfoType(i, &kind));
        if (kind != TKIND_ENUM) continue;
        ComPtr<ITypeInfo> type;
        ASSERT_EQ(S_OK, library->GetTypeInfo(i, type.Put()));
        for (const auto& [name, number] : ValuesOf(*type))
            expected.insert(NameOf(*type) + "." + name + " " + std::to_string(number));
    }
    Lines documented;
    std::string enumeration;
    std::istringstream stream(ReadReference("reference.md"));
    for (std::string line; std::getline(stream, line);) {
        if (!line.starts_with("| `") || line.find("Constants` |") == std::string::npos) continue;
        // One row for each enumeration: `Name` | `value` 0, `value` 1 | where it is used
        const std::vector<std::string> cells = CellsOf(line);
        enumeration = cells.at(0).substr(1, cells[0].size() - 2);
        std::istringstream values(cells.at(1));
        for (std::string value; std::getline(values, value, ',');) {
            value.erase(std::remove(value.begin(), value.end(), '`'), value.end());
            documented.insert(enumeration + "." + Trimmed(value));
        }
    }
    EXPECT_EQ(expected, documented);
}

}  // namespace
