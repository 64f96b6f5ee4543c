// What a host gets out of the library for each file in its arguments: a model database, called *.db, with tables of
// cases, or a document. The text is the same whoever made the document tree and the database layer.
#include "sectrix/extrusion/extrusion.h"
#include "sectrix/interfaces/dom_reader_json.h"
#include "sectrix/records/acis_geometry.h"
#include "sectrix/records/obj.h"
#include "sectrix/records/tables.h"
#include "support/result.h"

#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <sstream>

using namespace qel;
using namespace qel::Sectrix;
using fuzz::Text;

namespace {

std::string SectionsText(std::string const& document) {
    CrossSections set(0.5), again;
    std::istringstream stream(document);
    set.From(stream);
    Dom written;
    set.To(written);
    again.From(written);
    auto const text = Text(set) + Text(again); // before cutting adds to the pool
    return text + fuzz::CutText(set);
}

std::string PartText(Dom const& document) {
    Extrusion part;
    EndPlane plane;
    Position position;
    part.from(document);
    plane.from(document);
    position.from(document);
    Dom written;
    position.to(written);
    position.from(written);
    auto text = part.AssemblyPartName() + '\n' + Text(position) + Text(plane.Origin()) + Text(plane.Normal()) +
                fuzz::Number(plane.Skew()) + (plane.IsStart() ? " start\n" : " end\n");
    for (auto const& section : part.Sections()) {
        text += section.Exterior() ? "outline\n" : "hole\n";
        for (auto const& profile : section.Profiles()) {
            text += "profile\n";
            for (auto const& point : profile.Positions())
                text += Text(point);
        }
    }
    return text;
}

std::string DocumentText(std::string const& document) {
    Dom tree;
    bool const isRead = DomReaderJson::FromString(tree, document.c_str(), nullptr);
    return (isRead ? "read\n" : "refused\n") + SectionsText(document) + PartText(tree);
}

using Column = std::function<std::wstring(wchar_t const* name)>;

/// What `pull` gives for each row of a table of cases.
std::string CasesText(gvs::Database& database, wchar_t const* table,
                      std::function<std::string(Column const&)> const& pull) {
    mvq::DbTable cases(&database, table);
    gvs::Expression const all;
    std::string text;
    cases.querySequential(&all, nullptr, true);
    while (cases.readNext())
        text += pull([&](wchar_t const* column) {
                    auto const* value = cases.getDef()[column] ? cases.getStringValue(column) : nullptr;
                    return std::wstring(value ? value : L"");
                }) +
                '\n';
    return text;
}

std::int64_t Integer(std::wstring const& text) {
    return text.empty() ? 0 : std::stoll(text);
}

std::string PullsText(std::string const& path) {
    gvs::Database database(path);
    auto const pull = [&](auto const& record) {
        std::string data = "old";
        record.PullDataFromSourceRecord(&database, data);
        return data;
    };
    return CasesText(database, L"SAT_CASES",
                     [&](Column const& at) {
                         return pull(AcisGeometry({}, at(L"PARENT_CLASS"), at(L"PARENT_GUID"), at(L"DATA_GUID"), {},
                                                  static_cast<int>(Integer(at(L"INDEX"))), {}));
                     }) +
           CasesText(database, L"MESH_CASES", [&](Column const& at) {
               return pull(Obj(Integer(at(L"ID")), {}, {}, {}, {}, at(L"DATA_GUID"), {}));
           });
}

} // namespace

int main(int count, char** arguments) {
    for (auto const& path : std::vector<std::string>(arguments + 1, arguments + count)) {
        std::ifstream file(path, std::ios::binary);
        bool const isDatabase = path.size() > 3 && path.compare(path.size() - 3, 3, ".db") == 0;
        std::cout << (isDatabase ? PullsText(path) : DocumentText({std::istreambuf_iterator<char>(file), {}}));
    }
}
