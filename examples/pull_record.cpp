/// \file
/// Pulls the stored data of one mesh object out of a model database.

#include "sectrix/interfaces/gvs.h"
#include "sectrix/records/obj.h"

#include <cstdint>
#include <cstdlib>
#include <iostream>

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: pull_record DATABASE ID\n";
        return 2;
    }
    qel::Sectrix::Obj record;
    record.SetID(std::int64_t{std::strtoll(argv[2], nullptr, 10)});
    std::string data;
    try {
        gvs::Database database(argv[1]);
        record.PullDataFromSourceRecord(&database, data);
    } catch (gvs::Error const& error) { // no database, or a table that is not there
        std::cerr << argv[1] << ": " << error.what() << '\n';
        return 1;
    }
    // Nothing stored and no such row are one answer.
    std::cout << data.size() << " bytes, the first line: " << data.substr(0, data.find('\n')) << '\n';
    return data.empty() ? 1 : 0;
}
