"""The one error of the package."""

BAD_PARAMETER = 20205
UNPLOTTABLE = 1


class OrvexError(ValueError):
    """A parameter, a name or an array that cannot be used, or a point that cannot be computed.

    ``message_id`` is the number of the library's message (see docs/errors.md): 20200 to 20281 for what the library
    refuses, 20205 for what this package refuses, 1 for points refused under ``errors="raise"``.
    """

    message_id: int

    def __init__(self, message: str, message_id: int = BAD_PARAMETER) -> None:
        super().__init__(message)
        self.message_id = message_id
