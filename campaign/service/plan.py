"""What a seed stands for: documents and manners of their clients."""

import random

from ledger import Order

KINDS = {"sell": 80, "sellReturn": 5, "cashIn": 5, "cashOut": 2, "zReport": 1, "openShift": 1, "xReport": 3, "text": 3}
MANNERS = {"patient": 45, "hasty": 25, "doubled": 12, "gone": 6, "withdrawing": 6, "moving": 6}


def drawn(seed, what):
    """A source of chance for each use of its own: the order in which threads come does not matter."""
    return random.Random(f"{seed}/{what}")


def draw_orders(seed, count, registers, pools=()):
    """Half of the receipts go to pools, where there are any."""
    chance = drawn(seed, "orders")
    for number in range(count):
        kind = chance.choices(list(KINDS), KINDS.values())[0]
        manner = chance.choices(list(MANNERS), MANNERS.values())[0]
        start_before = chance.choice((0.05, 0.2, 1, 3)) if chance.random() < 0.15 else None
        register = chance.choice(registers)
        pool = chance.choice((None, chance.choice(pools))) if pools and kind in ("sell", "sellReturn") else None
        yield Order(f"chaos:{seed}:{number:06}", kind, 100 + number, register, manner, start_before, pool)


def batch_seeds(seed, documents, size):
    """Seed and size of each batch: one that went wrong is repeated alone."""
    for number, first in enumerate(range(0, documents, size)):
        yield f"{seed}.{number + 1}", min(size, documents - first)
