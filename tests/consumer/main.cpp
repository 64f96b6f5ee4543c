// A host in a folder of its own: it writes a set of sections, reads it back and cuts it. Its database has no
// tables.
#include "sectrix/interfaces/dom.h"
#include "sectrix/interfaces/gvs.h"
#include "sectrix/records/obj.h"
#include "sectrix/sections/cross_sections.h"
#include "sectrix/version.h"

#include <filesystem>
#include <fstream>
#include <iostream>

int main() {
    qel::Sectrix::CrossSections set({{0, 0}, {4, 0}, {4, 1}, {1, 1}, {1, 3}, {0, 3}}, true);
    qel::Dom document;
    set.To(document);
    qel::Sectrix::CrossSections copy;
    copy.From(document);
    auto const empty = std::filesystem::u8path("br\xC3\xBC\x63ke.db"); // a file's name may be any text
    std::ofstream{empty};
    gvs::Database database(empty.u8string());
    try {
        std::string data;
        qel::Sectrix::Obj().PullDataFromSourceRecord(&database, data);
    } catch (gvs::Error const& error) {
        std::cout << error.what() << '\n';
    }
    std::cout << qel::Sectrix::kVersion << ": " << copy.Items().at(0).ConvexLoops().size() << " convex loops\n";
}
