// Reads the file named by the first word into a tree, once.
#include <boost/property_tree/ptree.hpp>
#include <boost/property_tree/xml_parser.hpp>

#include <fstream>
#include <iostream>

int main(int argc, char* argv[]) {
    if (argc != 2) {
        std::cerr << "usage: bench_read_xml <file>\n";
        return 2;
    }
    std::ifstream file(argv[1], std::ios::binary);
    boost::property_tree::ptree tree;
    boost::property_tree::read_xml(file, tree, boost::property_tree::xml_parser::trim_whitespace);
    return tree.empty() ? 1 : 0;
}
