package zmatrix.raw;

import com.sun.jna.Memory;
import com.sun.jna.Pointer;
import com.sun.jna.PointerType;
import java.nio.charset.StandardCharsets;
import java.util.function.Supplier;

/** A structure of the library, by its address. */
public abstract class NativeRecord extends PointerType {
    NativeRecord() {}

    static <R extends NativeRecord> R at(Pointer place, Supplier<R> create) {
        if (place == null) {
            return null;
        }
        R record = create.get();
        record.setPointer(place);
        return record;
    }

    static Pointer placeOf(PointerType value) {
        return value == null ? null : value.getPointer();
    }

    static Memory memory(int size, int count) {
        Memory memory = new Memory((long) size * count);
        memory.clear();
        return memory;
    }

    /** The text in a field of {@code size} characters, up to its first 0. */
    final String text(int offset, int size) {
        byte[] bytes = getPointer().getByteArray(offset, size);
        int length = 0;
        while (length < size && bytes[length] != 0) {
            length++;
        }
        return new String(bytes, 0, length, StandardCharsets.UTF_8);
    }

    final void setArray(int offset, int size, int... values) {
        check(values.length, size);
        getPointer().write(offset, values, 0, values.length);
    }

    final void setArray(int offset, int size, long... values) {
        check(values.length, size);
        getPointer().write(offset, values, 0, values.length);
    }

    final void setArray(int offset, int size, byte... values) {
        check(values.length, size);
        getPointer().write(offset, values, 0, values.length);
    }

    private static void check(int given, int size) {
        if (given > size) {
            throw new IllegalArgumentException("the field holds " + size + " values, not " + given);
        }
    }
}
