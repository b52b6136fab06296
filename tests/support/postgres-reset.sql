-- Lets a test put its database back as the template has it, in a fraction of the time that a new copy
-- takes. The rows to put back are kept in a schema of their own.
CREATE SCHEMA veltrane_test;

CREATE FUNCTION veltrane_test.shape() RETURNS text LANGUAGE sql AS $$
    SELECT md5(string_agg(format('%s %s %s', c.relname, a.attname, a.atttypid), ',' ORDER BY c.relname, a.attnum))
    FROM pg_class c JOIN pg_attribute a ON a.attrelid = c.oid
    WHERE c.relnamespace = 'public'::regnamespace AND c.relkind = 'r' AND a.attnum > 0 AND NOT a.attisdropped
$$;

CREATE TABLE veltrane_test.original AS SELECT veltrane_test.shape() AS shape;

DO $$
DECLARE name text;
BEGIN
    FOR name IN SELECT tablename FROM pg_tables WHERE schemaname = 'public' LOOP
        EXECUTE format('CREATE TABLE veltrane_test.%I AS TABLE public.%I', 'rows_' || name, name);
    END LOOP;
END $$;

-- 1 when the rows and the next keys are as they were; 0 where a test changed the tables themselves.
CREATE FUNCTION veltrane_test.reset() RETURNS integer LANGUAGE plpgsql AS $$
DECLARE name text;
BEGIN
    IF veltrane_test.shape() <> (SELECT shape FROM veltrane_test.original) THEN
        RETURN 0;
    END IF;
    FOR name IN SELECT tablename FROM pg_tables WHERE schemaname = 'public' LOOP
        IF pg_relation_size(format('public.%I', name)) > 1000000 THEN
            EXECUTE format('TRUNCATE public.%I', name);
        ELSE
            EXECUTE format('DELETE FROM public.%I', name);
        END IF;
        EXECUTE format('INSERT INTO public.%I SELECT * FROM veltrane_test.%I', name, 'rows_' || name);
    END LOOP;
    PERFORM setval(s.seqrelid::regclass, s.seqstart, false)
    FROM pg_sequence s JOIN pg_class c ON c.oid = s.seqrelid WHERE c.relnamespace = 'public'::regnamespace;
    RETURN 1;
END $$;
