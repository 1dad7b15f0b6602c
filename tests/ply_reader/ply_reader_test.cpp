// SPDX-License-Identifier: MIT
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <memory>
#include <rply.h>
#include <sstream>
#include <type_traits>

namespace Quenza {
namespace {

/// What a reading gave: every value that was called back, and the last error.
struct Record {
    std::string values;
    std::string error;
    int stop_after = -1; ///< Values until the callback stops; negative for never.
};

void keepError(p_ply ply, const char* message) {
    void* record = nullptr;
    if (ply) {
        ply_get_ply_user_data(ply, &record, nullptr);
        static_cast<Record*>(record)->error = message;
    }
}

/// Writes "<property's number>@<instance>[<place>/<length>]=<value>".
int keepValue(p_ply_argument argument) {
    void* pdata = nullptr;
    long number = 0;
    long instance = 0;
    long length = 0;
    long place = 0;
    ply_get_argument_user_data(argument, &pdata, &number);
    ply_get_argument_element(argument, nullptr, &instance);
    ply_get_argument_property(argument, nullptr, &length, &place);
    auto& record = *static_cast<Record*>(pdata);
    if (record.stop_after == 0)
        return 0;
    --record.stop_after;
    std::ostringstream text;
    text << number << '@' << instance << '[' << place << '/' << length
         << "]=" << ply_get_argument_value(argument) << ' ';
    record.values += text.str();
    return 1;
}

struct Callback {
    const char* element;
    const char* property;
    long instances; ///< What ply_set_read_cb is to return.
};

class PlyReaderTest : public testing::Test {
protected:
    using Handle = std::unique_ptr<std::remove_pointer_t<p_ply>, int (*)(p_ply)>;

    Handle open(const std::string& bytes) {
        writeBytes(path, bytes);
        return Handle(ply_open(path.toStdString().c_str(), keepError, 0, &record), ply_close);
    }

    /// "open", "header" or "body" for what failed, with the reason; else the values.
    std::string read(const std::string& bytes, std::initializer_list<Callback> callbacks) {
        record.values.clear();
        record.error.clear();
        const Handle ply = open(bytes);
        if (!ply)
            return "open";
        if (!ply_read_header(ply.get()))
            return "header: " + record.error;
        long number = 0;
        for (const Callback& callback : callbacks)
            EXPECT_EQ(
                ply_set_read_cb(ply.get(), callback.element, callback.property, keepValue, &record, number++),
                callback.instances)
                << callback.element << ' ' << callback.property;
        return ply_read(ply.get()) ? record.values : "body: " + record.error;
    }

    const TempDir dir;
    const String path = dir / "m.ply";
    Record record;
};

const std::string ALL_TYPES = "element a 2\n"
                              "property char c\nproperty uint8 uc\nproperty short s\nproperty uint16 us\n"
                              "property int i\nproperty uint32 ui\nproperty float f\nproperty float64 d\n"
                              "property list uchar short l\n"
                              "element b 1\n"
                              "property list int32 double l\n"
                              "property int8 last\n"
                              "end_header\n";
const std::initializer_list<Callback> ALL_CALLBACKS = {
    {"a", "c", 2},    {"a", "uc", 2},   {"a", "s", 2}, {"a", "us", 2}, {"a", "i", 2},
    {"a", "ui", 2},   {"a", "f", 2},    {"a", "d", 2}, {"a", "l", 2},  {"b", "l", 1},
    {"b", "last", 1}, {"b", "none", 0}, {"c", "l", 0}};
const std::string ALL_VALUES =
    "0@0[0/1]=-128 1@0[0/1]=255 2@0[0/1]=-32768 3@0[0/1]=65535 4@0[0/1]=-2.14748e+09 5@0[0/1]=4.29497e+09 "
    "6@0[0/1]=0.5 7@0[0/1]=-1e+300 8@0[-1/2]=2 8@0[0/2]=-7 8@0[1/2]=300 "
    "0@1[0/1]=1 1@1[0/1]=2 2@1[0/1]=3 3@1[0/1]=4 4@1[0/1]=5 5@1[0/1]=6 6@1[0/1]=7 7@1[0/1]=8 8@1[-1/0]=0 "
    "9@0[-1/1]=1 9@0[0/1]=0.25 10@0[0/1]=9 ";

/// Appends values in one of the byte orders.
class Bytes {
public:
    explicit Bytes(std::endian order) : order_(order) {}
    template <class T>
    Bytes& operator<<(T value) {
        char bytes[sizeof(T)];
        std::memcpy(bytes, &value, sizeof(T));
        if (order_ != std::endian::native)
            std::reverse(bytes, bytes + sizeof(T));
        text.append(bytes, sizeof(T));
        return *this;
    }
    std::string text;

private:
    std::endian order_;
};

std::string binaryBody(std::endian order) {
    Bytes bytes(order);
    bytes << std::int8_t(-128) << std::uint8_t(255) << std::int16_t(-32768) << std::uint16_t(65535)
          << std::int32_t(-2147483647 - 1) << std::uint32_t(4294967295u) << 0.5f << -1e300;
    bytes << std::uint8_t(2) << std::int16_t(-7) << std::int16_t(300);
    bytes << std::int8_t(1) << std::uint8_t(2) << std::int16_t(3) << std::uint16_t(4) << std::int32_t(5)
          << std::uint32_t(6) << 7.0f << 8.0 << std::uint8_t(0);
    bytes << std::int32_t(1) << 0.25 << std::int8_t(9);
    return bytes.text;
}

TEST_F(PlyReaderTest, ReadsAllTypesInAllFormats) {
    const std::string ascii = "-128 255\t-32768 65535 -2147483648 4294967295\r\n .5 -1e300\n2 -7 300\n"
                              "+1 2 3 4 5 6 7. 8 0\n\n1 2.5e-1 9";
    EXPECT_EQ(read("ply\nformat ascii 1.0\n" + ALL_TYPES + ascii, ALL_CALLBACKS), ALL_VALUES);
    EXPECT_EQ(
        read("ply\nformat binary_little_endian 1.0\n" + ALL_TYPES + binaryBody(std::endian::little) + "more",
             ALL_CALLBACKS),
        ALL_VALUES);
    EXPECT_EQ(
        read("ply\nformat binary_big_endian 1.0\n" + ALL_TYPES + binaryBody(std::endian::big), ALL_CALLBACKS),
        ALL_VALUES);
}

TEST_F(PlyReaderTest, SkipsWhatNobodyAskedFor) {
    const std::string expected = "0@0[0/1]=9 ";
    EXPECT_EQ(read("ply\nformat ascii 1.0\n" + ALL_TYPES + "a b c d e f g h 1 x 0 0 0 0 0 0 0 0 0 2 x y 9",
                   {{"b", "last", 1}}),
              expected);
    EXPECT_EQ(read("ply\nformat binary_big_endian 1.0\n" + ALL_TYPES + binaryBody(std::endian::big),
                   {{"b", "last", 1}}),
              expected);
}

TEST_F(PlyReaderTest, TakesHeadersOfManyForms) {
    const std::initializer_list<Callback> x = {{"v", "x", 1}};
    const std::string lines[] = {"ply",
                                 "A stray line  ",
                                 "format binary_little_endian 1.0   ",
                                 "comment element v 7",
                                 "obj_info property",
                                 "element empty " + std::to_string(std::numeric_limits<long>::max()),
                                 "element\tv  1 ",
                                 "comment",
                                 "property uchar x",
                                 "end_header"};
    // The body begins with bytes that look like line ends.
    for (const char* end : {"\n", "\r\n", "\r"}) {
        std::string header;
        for (const std::string& line : lines)
            header += line + end;
        EXPECT_EQ(read(header + "\n", x), "0@0[0/1]=10 ");
        EXPECT_EQ(read(header + "\r", x), "0@0[0/1]=13 ");
    }
}

TEST_F(PlyReaderTest, TellsWhatIsWrongWithAHeader) {
    const struct {
        const char* file;
        const char* result;
    } cases[] = {
        {"", "open"},
        {"ply", "open"},
        {"plyx\n", "open"},
        {"PLY\nformat ascii 1.0\nend_header\n", "open"},
        {"ply\nformat ascii 1.0\n", "header: the header doesn't end"},
        {"ply\nformat ascii 1.0\nend_header", "header: the header doesn't end"},
        {"ply\nend_header\n", "header: the header names no format"},
        {"ply\nformat ascii 2.0\nend_header\n", "header: unknown version of the format"},
        {"ply\nformat utf8 1.0\nend_header\n", "header: unknown format 'utf8'"},
        {"ply\nformat ascii 1.0\nelement v -1\nend_header\n", "header: bad count of element 'v'"},
        {"ply\nformat ascii 1.0\nelement v 1e3\nend_header\n", "header: bad count of element 'v'"},
        {"ply\nformat ascii 1.0\nelement v\nend_header\n", "header: bad count of element 'v'"},
        {"ply\nformat ascii 1.0\nelement v 9223372036854775808\nend_header\n",
         "header: bad count of element 'v'"},
        {"ply\nformat ascii 1.0\nelement v 1 2\nend_header\n",
         "header: more words in a line of the header than expected"},
        {"ply\nformat ascii 1.0\nelement v 1\nproperty half x\nend_header\n", "header: unknown type 'half'"},
        {"ply\nformat ascii 1.0\nelement v 1\nproperty float\nend_header\n",
         "header: a property has no name"},
        {"ply\nformat ascii 1.0\nelement v 1\nproperty list float int l\nend_header\n",
         "header: the length of a list must be an integer"},
        {"ply\nformat ascii 1.0\nelement v 1\npropertty int l\nend_header\n",
         "header: unknown line 'propertty' in the header"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(read(test.file, {}), test.result) << test.file;
    EXPECT_EQ(ply_open((dir / "none").toStdString().c_str(), keepError, 0, nullptr), nullptr);
    EXPECT_EQ(ply_open(dir.path().toStdString().c_str(), keepError, 0, nullptr), nullptr);
}

TEST_F(PlyReaderTest, TellsWhatIsWrongWithABody) {
    const std::string end = "body: the file ends within its body";
    // The reader's lengths are of this type.
    const std::string end_of_long_list = sizeof(long) > 4 ? end : "body: a list is too long";
    const struct {
        const char* properties;
        const char* body;
        std::string result;
    } cases[] = {
        {"property float x", "", end},
        {"property float x", "1,5", "body: '1,5' isn't a value of the property's type"},
        {"property float x", "1e39", "body: '1e39' isn't a value of the property's type"},
        {"property float x", "1e-60", "0@0[0/1]=1e-60 "},
        {"property float x", "-INF", "0@0[0/1]=-inf "},
        {"property double x", "nan", "0@0[0/1]=nan "},
        {"property double x", "nano", "body: 'nano' isn't a value of the property's type"},
        {"property int x", "1.0", "body: '1.0' isn't a value of the property's type"},
        {"property uchar x", "256", "body: '256' isn't a value of the property's type"},
        {"property uint x", "-1", "body: '-1' isn't a value of the property's type"},
        {"property list int int x", "-1", "body: a list has a negative length"},
        {"property list uint int x", "4000000000 1 2", end_of_long_list},
    };
    for (const auto& test : cases)
        EXPECT_EQ(read(std::string("ply\nformat ascii 1.0\nelement v 1\n") + test.properties +
                           "\nend_header\n" + test.body,
                       {{"v", "x", 1}}),
                  test.result)
            << test.properties << ' ' << test.body;
    // Nobody asks for the list, whose end would lie 32 GB further on.
    EXPECT_EQ(
        read("ply\nformat binary_little_endian 1.0\nelement v 1\nproperty list uint double x\nend_header\n"
             "\xFF\xFF\xFF\xFF",
             {}),
        end_of_long_list);
}

TEST_F(PlyReaderTest, FailsAtEveryTruncation) {
    const std::string body = binaryBody(std::endian::big);
    const std::string header = "ply\nformat binary_big_endian 1.0\n" + ALL_TYPES;
    for (std::size_t size = 0; size < header.size(); ++size)
        EXPECT_EQ(read(header.substr(0, size), {}), size < 4 ? "open" : "header: the header doesn't end")
            << size;
    for (std::size_t size = 0; size < body.size(); ++size)
        EXPECT_EQ(read(header + body.substr(0, size), {{"a", "l", 2}}), "body: the file ends within its body")
            << size;
}

TEST_F(PlyReaderTest, StopsWhereTheCallbackStops) {
    record.stop_after = 2;
    EXPECT_EQ(read("ply\nformat ascii 1.0\nelement v 3\nproperty int x\nend_header\n1 2 3", {{"v", "x", 3}}),
              "body: stopped by the callback");
    EXPECT_EQ(record.values, "0@0[0/1]=1 0@1[0/1]=2 ");
    const Handle ply = open("ply\nformat ascii 1.0\nend_header\n");
    EXPECT_EQ(ply_read(ply.get()), 0) << "the header comes first";
    EXPECT_EQ(record.error, "the header was not read");
}

} // namespace
} // namespace Quenza
