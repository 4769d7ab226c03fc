#include "platform/tools/rescomp/version_info.h"

#include <array>
#include <string_view>

namespace rescomp {

namespace {

constexpr std::uint16_t kBinary = 0;
constexpr std::uint16_t kText = 1;

// VS_FIXEDFILEINFO, in the order of its members.
struct FixedFileInfo {
  std::uint32_t signature = 0xFEEF04BD;
  std::uint32_t structureVersion = 0x00010000;
  std::array<std::uint32_t, 2> fileVersion{};
  std::array<std::uint32_t, 2> productVersion{};
  std::uint32_t flagsMask = 0;
  std::uint32_t flags = 0;
  std::uint32_t operatingSystem = 0;
  std::uint32_t type = 0;
  std::uint32_t subtype = 0;
  std::array<std::uint32_t, 2> date{};
};

std::u16string WideText(const std::string& utf8) {
  // The tokens have been checked to be UTF-8.
  return Utf16(utf8).value_or(std::u16string());
}

std::array<std::uint32_t, 2> ReadVersion(TokenStream& tokens) {
  std::array<std::uint32_t, 4> parts{};
  std::size_t count = 0;
  do {
    if (count == parts.size()) tokens.Fail("a version has at most four numbers");
    parts[count++] = tokens.Number16();
  } while (tokens.Accept(","));
  return {(parts[0] << 16) | parts[1], (parts[2] << 16) | parts[3]};
}

FixedFileInfo ReadFixedInfo(TokenStream& tokens) {
  FixedFileInfo info;
  while (!tokens.AcceptBegin()) {
    if (tokens.Accept("FILEVERSION")) {
      info.fileVersion = ReadVersion(tokens);
    } else if (tokens.Accept("PRODUCTVERSION")) {
      info.productVersion = ReadVersion(tokens);
    } else if (tokens.Accept("FILEFLAGSMASK")) {
      info.flagsMask = tokens.Number();
    } else if (tokens.Accept("FILEFLAGS")) {
      info.flags = tokens.Number();
    } else if (tokens.Accept("FILEOS")) {
      info.operatingSystem = tokens.Number();
    } else if (tokens.Accept("FILETYPE")) {
      info.type = tokens.Number();
    } else if (tokens.Accept("FILESUBTYPE")) {
      info.subtype = tokens.Number();
    } else {
      tokens.Fail("'" + tokens.Peek().text + "' is not known in VERSIONINFO");
    }
  }
  return info;
}

void PutFixedInfo(ByteWriter& out, const FixedFileInfo& info) {
  out.Put32(info.signature);
  out.Put32(info.structureVersion);
  for (const std::uint32_t half : info.fileVersion)
    out.Put32(half);
  for (const std::uint32_t half : info.productVersion)
    out.Put32(half);
  out.Put32(info.flagsMask);
  out.Put32(info.flags);
  out.Put32(info.operatingSystem);
  out.Put32(info.type);
  out.Put32(info.subtype);
  for (const std::uint32_t half : info.date)
    out.Put32(half);
}

// A node begins with its length, the length of its value, the value's kind and the key; the lengths
// are known only when it ends. The length leaves out the padding after the node.
class Node {
 public:
  Node(ByteWriter& out, std::uint16_t kind, std::string_view key) : out_(out) {
    out_.AlignTo4();
    begin_ = out_.Size();
    out_.Put16(0);
    out_.Put16(0);
    out_.Put16(kind);
    out_.PutText(WideText(std::string(key)));
  }

  // Bytes of a binary value, characters with the null of a text.
  void SetValueLength(std::size_t length) {
    out_.Set16(begin_ + 2, static_cast<std::uint16_t>(length));
  }

  void End() { out_.Set16(begin_, static_cast<std::uint16_t>(out_.Size() - begin_)); }

 private:
  ByteWriter& out_;
  std::size_t begin_ = 0;
};

// VALUE "key", "text" or VALUE "key", number, number...
void CompileValue(TokenStream& tokens, ByteWriter& out) {
  const std::string key = tokens.String();
  tokens.Expect(",");
  if (tokens.Peek().kind == TokenKind::kString) {
    std::u16string text = WideText(tokens.String());
    while (text.ends_with(u'\0'))
      text.pop_back();
    Node node(out, kText, key);
    out.AlignTo4();
    out.PutText(text);
    node.SetValueLength(text.size() + 1);
    node.End();
    return;
  }
  Node node(out, kBinary, key);
  out.AlignTo4();
  const std::size_t begin = out.Size();
  do {
    out.Put16(tokens.Number16());
  } while (tokens.Accept(","));
  node.SetValueLength(out.Size() - begin);
  node.End();
}

void CompileBlockBody(TokenStream& tokens, ByteWriter& out);

void CompileBlock(TokenStream& tokens, ByteWriter& out) {
  Node node(out, kText, tokens.String());
  if (!tokens.AcceptBegin()) tokens.Fail("BEGIN is expected");
  CompileBlockBody(tokens, out);
  node.End();
}

void CompileBlockBody(TokenStream& tokens, ByteWriter& out) {
  while (!tokens.AcceptEnd()) {
    if (tokens.Accept("BLOCK")) {
      CompileBlock(tokens, out);
    } else if (tokens.Accept("VALUE")) {
      CompileValue(tokens, out);
    } else {
      tokens.Fail("BLOCK, VALUE or END is expected before '" + tokens.Peek().text + "'");
    }
  }
}

}  // namespace

Bytes CompileVersionInfo(TokenStream& tokens) {
  ByteWriter out;
  const FixedFileInfo info = ReadFixedInfo(tokens);
  Node root(out, kBinary, "VS_VERSION_INFO");
  out.AlignTo4();
  const std::size_t begin = out.Size();
  PutFixedInfo(out, info);
  root.SetValueLength(out.Size() - begin);
  CompileBlockBody(tokens, out);
  root.End();
  return out.Take();
}

}  // namespace rescomp
