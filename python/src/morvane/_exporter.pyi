from typing import Any

class Exporter:
    _lent: Any
    def __buffer__(self, flags: int, /) -> memoryview: ...
