"""The program's texts, as the catalogue's source has them."""
import re
from pathlib import Path

MESSAGES = Path(__file__).resolve().parent.parent / "src/resources/messages.mc"
LANGUAGES = {"en": "English", "sv": "Swedish"}


def interface_texts(language):
    """The program's texts by number."""
    source = MESSAGES.read_text(encoding="utf-8")
    name = LANGUAGES[language]
    texts = {}
    for message in re.split(r"^MessageId=", source, flags=re.MULTILINE)[1:]:
        text = re.search(rf"^Language={name}\n(.*?)\n\.$", message, re.MULTILINE | re.DOTALL)
        texts[int(message.split()[0])] = text.group(1).removesuffix("%0")
    return texts
