// A list of objects of one kind, in every format.
#include "interfaces/cli/cliframework/ObjectListResult.h"

#include "interfaces/cli/cliframework/CliFrameworkTypes.h"

#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <utility>

namespace {

using namespace cli::framework;

using Pairs = std::initializer_list<std::pair<const char*, const char*>>;

void insert(ObjectListResult& result, const std::string& key, Pairs properties) {
    PropertyListResult list;
    for (const auto& [name, value] : properties) {
        list.insert(name, value);
    }
    result.insert(key, list);
}

ObjectListResult oneDrive() {
    ObjectListResult result;
    result.setRoot("Drive");
    insert(result, "Drive 0", {{"Size", "1"}});
    return result;
}

ObjectListResult twoDrives() {
    ObjectListResult result = oneDrive();
    insert(result, "Drive 1", {{"Size", "x \"y\""}, {"Wear (%)", "TRUE"}});
    return result;
}

TEST(ObjectListResult, RendersTwoEntriesAsText) {
    ObjectListResult result;
    insert(result, "A", {{"Name", "1"}});
    insert(result, "B", {{"Name", "2"}});
    EXPECT_EQ(result.outputText(), "- A -\n"
                                   "Name: 1\n"
                                   "\n"
                                   "- B -\n"
                                   "Name: 2\n"
                                   "\n");
}

TEST(ObjectListResult, RendersOneEntryAsText) {
    EXPECT_EQ(oneDrive().outputText(), "- Drive 0 -\nSize: 1\n\n");
}

TEST(ObjectListResult, RendersAnEntryWithoutPropertiesInEveryFormat) {
    ObjectListResult result;
    insert(result, "A", {});
    EXPECT_EQ(result.outputText(), "- A -\nNo results\n\n");
    EXPECT_EQ(result.outputXml(), "<RootList>\n<A></A>\n</RootList>\n");
    EXPECT_EQ(result.outputJson(), "{\n\t\"A\":\n\t{\n\t}\n}\n");
    EXPECT_EQ(result.outputCSV(), "A,\n,\n");
    EXPECT_EQ(result.outputTextTable(), "\n\n");
    EXPECT_EQ(result.outputEsxXml(),
              std::string(ESX_HEAD) + "<list type=\"structure\"></list></output>");
}

TEST(ObjectListResult, RendersOneEntryAsXml) {
    EXPECT_EQ(oneDrive().outputXml(), "<DriveList>\n"
                                      "<Drive_0>\n"
                                      "\t<Size>1</Size>\n"
                                      "</Drive_0>\n"
                                      "</DriveList>\n");
}

TEST(ObjectListResult, RendersTwoEntriesAsXml) {
    EXPECT_EQ(twoDrives().outputXml(), "<DriveList>\n"
                                       "<Drive_0>\n"
                                       "\t<Size>1</Size>\n"
                                       "</Drive_0>\n"
                                       "<Drive_1>\n"
                                       "\t<Size>x \"y\"</Size>\n"
                                       "\t<Wear_(%)>TRUE</Wear_(%)>\n"
                                       "</Drive_1>\n"
                                       "</DriveList>\n");
}

TEST(ObjectListResult, KeepsBlanksOfItsOwnNameInXml) {
    ObjectListResult result;
    result.setRoot("My Drive");
    insert(result, "Drive 0", {{"a", "1"}});
    EXPECT_EQ(result.outputXml(), "<My DriveList>\n"
                                  "<Drive_0>\n"
                                  "\t<a>1</a>\n"
                                  "</Drive_0>\n"
                                  "</My DriveList>\n");
}

TEST(ObjectListResult, RendersOneEntryAsJsonWithoutAComma) {
    EXPECT_EQ(oneDrive().outputJson(), "{\n"
                                       "\t\"Drive 0\":\n"
                                       "\t{\n"
                                       "\t\t\"Size\":1\n"
                                       "\t}\n"
                                       "}\n");
}

TEST(ObjectListResult, RendersTwoEntriesAsJsonWithACommaBetween) {
    EXPECT_EQ(twoDrives().outputJson(), "{\n"
                                        "\t\"Drive 0\":\n"
                                        "\t{\n"
                                        "\t\t\"Size\":1\n"
                                        "\t},\n"
                                        "\t\"Drive 1\":\n"
                                        "\t{\n"
                                        "\t\t\"Size\":\"x 'y'\",\n"
                                        "\t\t\"Wear (%)\":true\n"
                                        "\t}\n"
                                        "}\n");
}

TEST(ObjectListResult, RendersEntriesAsCsvWithADoubledComma) {
    ObjectListResult result;
    insert(result, "Drive 0", {{"A", "1"}, {"B", "2"}});
    EXPECT_EQ(result.outputCSV(), "Drive 0,\nA,1,B,2,,\n");
    insert(result, "Drive 1", {{"A", "3"}});
    EXPECT_EQ(result.outputCSV(), "Drive 0,\nA,1,B,2,,\nDrive 1,\nA,3,,\n");
}

TEST(ObjectListResult, RendersOneEntryAsEsxKeyValueList) {
    EXPECT_EQ(oneDrive().outputEsxXml(), std::string(ESX_HEAD) +
                                             "<list type=\"structure\">"
                                             "<structure typeName=\"KeyValue\">"
                                             "<field name=\"Attribute Name\">"
                                             "<string>Size</string></field>"
                                             "<field name=\"Value\"><string>1</string></field>"
                                             "</structure>"
                                             "</list></output>");
}

TEST(ObjectListResult, RendersTwoEntriesAsEsxStructuresNamedAfterTheirKind) {
    EXPECT_EQ(twoDrives().outputEsxXml(),
              std::string(ESX_HEAD) + "<list type=\"structure\">"
                                      "<structure typeName=\"Drive\">"
                                      "<field name=\"Size\"><string>1</string></field>"
                                      "</structure>"
                                      "<structure typeName=\"Drive\">"
                                      "<field name=\"Size\"><string>x \"y\"</string></field>"
                                      "<field name=\"Wear (%)\"><string>TRUE</string></field>"
                                      "</structure>"
                                      "</list></output>");
}

TEST(ObjectListResult, RendersNothingInEveryFormat) {
    const ObjectListResult empty;
    EXPECT_EQ(empty.outputText(), "No results");
    EXPECT_EQ(empty.outputTextTable(), "No results");
    EXPECT_EQ(empty.outputXml(), "<RootList></RootList>\n");
    EXPECT_EQ(empty.outputJson(), "{\n}\n");
    EXPECT_EQ(empty.outputCSV(), "");
    EXPECT_EQ(empty.outputEsxXml(),
              std::string(ESX_HEAD) + "<list type=\"structure\"></list></output>");
}

TEST(ObjectListResult, NamesTheXmlListAfterItsKindEvenIfEmpty) {
    ObjectListResult empty;
    empty.setRoot("Drive");
    EXPECT_EQ(empty.outputXml(), "<DriveList></DriveList>\n");
}

TEST(ObjectListResult, RenamesTheCallersList) {
    PropertyListResult list;
    list.setName("Former name");
    ObjectListResult result;
    result.insert("Drive 7", list);
    EXPECT_EQ(list.getName(), "Drive 7");
    ASSERT_EQ(result.getCount(), 1U);
    EXPECT_EQ(result.begin()->first, "Drive 7");
    EXPECT_EQ(result.begin()->second.getName(), "Drive 7");
}

TEST(ObjectListResult, HoldsCopiesThatShareTheirCells) {
    PropertyListResult list;
    list.insert("a", "1");
    ObjectListResult result;
    result.insert("A", list);
    list.insert("b", "2");
    result.insert("B", list);
    EXPECT_EQ(result.outputCSV(), "A,\na,1,,\nB,\na,1,b,2,,\n");
    EXPECT_EQ(result.begin()->second.propertiesBegin()->second, list.propertiesBegin()->second);
    EXPECT_EQ(result.end() - result.begin(), 2);
}

TEST(ObjectListResult, PrintsAListByItsOwnOutputTypeInTextOnly) {
    PropertyListResult list;
    list.insert("a", "1");
    list.setOutputType(OutputType::csv);
    ObjectListResult result;
    result.insert("A", list);
    EXPECT_EQ(result.outputText(), "- A -\na,1,\n");
    EXPECT_EQ(result.outputXml(), "<RootList>\n<A>\n\t<a>1</a>\n</A>\n</RootList>\n");
    EXPECT_EQ(result.outputJson(), "{\n\t\"A\":\n\t{\n\t\t\"a\":1\n\t}\n}\n");
}

TEST(ObjectListResult, LinesUpTheColumnsOfItsTable) {
    ObjectListResult result;
    insert(result, "0", {{"Name", "A"}, {"Size", "100"}});
    insert(result, "1", {{"Name", "Beta"}, {"Size", "1"}});
    EXPECT_EQ(result.outputTextTable(), "Name Size \n"
                                        "A    100  \n"
                                        "Beta 1    \n");
    result.setOutputType(OutputType::textTable);
    EXPECT_EQ(result.output(), "Name Size \n"
                               "A    100  \n"
                               "Beta 1    \n");
}

TEST(ObjectListResult, WidensAColumnToItsLongestValueInBytes) {
    ObjectListResult result;
    insert(result, "0", {{"N", "A"}, {"M", "x"}});
    insert(result, "1", {{"N", "caf\xc3\xa9"}, {"M", "y"}});
    EXPECT_EQ(result.outputTextTable(), "N     M \n"
                                        "A     x \n"
                                        "caf\xc3\xa9 y \n");
}

TEST(ObjectListResult, MeasuresColumnsByNameInAnyCaseAndFillsThemByPosition) {
    ObjectListResult result;
    insert(result, "0", {{"A", "1"}, {"B", "2"}});
    insert(result, "1", {{"b", "long"}, {"a", "x"}});
    insert(result, "2", {{"C", "unmeasured"}});
    EXPECT_EQ(result.outputTextTable(), "A B    \n"
                                        "1 2    \n"
                                        "long x    \n"
                                        "unmeasured \n");
}

TEST(ObjectListResult, GivesColumnsBeyondTheFirstEntryNoWidth) {
    ObjectListResult result;
    insert(result, "0", {{"A", "1"}});
    insert(result, "1", {{"A", "22"}, {"B", "333"}, {"C", ""}});
    EXPECT_EQ(result.outputTextTable(), "A  \n"
                                        "1  \n"
                                        "22 333  \n");
}

TEST(ObjectListResult, RendersTwentyThousandEntries) {
    constexpr int COUNT = 20000;
    ObjectListResult result;
    result.setRoot("Drive");
    std::string text;
    std::string xml = "<DriveList>\n";
    std::string json = "{\n";
    std::string csv;
    std::string esx = std::string(ESX_HEAD) + "<list type=\"structure\">";
    std::string table = "Index Name    \n";
    for (int number = 0; number < COUNT; ++number) {
        const std::string digits = std::to_string(number);
        const std::string key = "Drive " + digits;
        PropertyListResult list;
        list.insert("Index", digits);
        list.insert("Name", "n-" + digits);
        result.insert(key, list);

        const std::string pad(5 - digits.size(), ' ');
        text += "- " + key + " -\nIndex: " + digits + "\nName: n-" + digits + "\n\n";
        xml += "<Drive_" + digits + ">\n\t<Index>" + digits + "</Index>\n\t<Name>n-" + digits +
               "</Name>\n</Drive_" + digits + ">\n";
        json += "\t\"" + key + "\":\n\t{\n\t\t\"Index\":" + digits + ",\n\t\t\"Name\":\"n-" +
                digits + "\"\n\t}" + (number + 1 < COUNT ? ",\n" : "\n");
        csv += key + ",\nIndex," + digits + ",Name,n-" + digits + ",,\n";
        esx += "<structure typeName=\"Drive\"><field name=\"Index\"><string>" + digits +
               "</string></field><field name=\"Name\"><string>n-" + digits +
               "</string></field></structure>";
        table += digits + pad + " n-" + digits + pad + " \n";
    }
    xml += "</DriveList>\n";
    json += "}\n";
    esx += "</list></output>";

    EXPECT_EQ(result.getCount(), 20000U);
    EXPECT_TRUE(result.outputText() == text);
    EXPECT_TRUE(result.outputXml() == xml);
    EXPECT_TRUE(result.outputJson() == json);
    EXPECT_TRUE(result.outputCSV() == csv);
    EXPECT_TRUE(result.outputEsxXml() == esx);
    EXPECT_TRUE(result.outputTextTable() == table);
}

}  // namespace
