<?xml version="1.0" encoding="UTF-8"?>
<!--
  From a dump of Wickerdeck 3 (wickerdeck.dtd) to a canonical dump. docs/agents.md has the table of
  what becomes what, and what is dropped.

  Attributes that are missing have the meaning that the DTD gives beside them: nothing has filled
  them in. A number that is none ends the translation, because a restore without that limit would
  give everything away.

  What becomes of a name stands in a template of its own and not in a variable that several share: a
  variable made by templates is a document of its own, and a million of them cost more than the rest.
-->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">

  <xsl:output method="xml" encoding="UTF-8" indent="yes"/>

  <xsl:key name="plan" match="plan" use="@id"/>

  <xsl:template match="/wickerdeck">
    <migration-dump>
      <admin>
        <resellers><xsl:apply-templates select="partner"/></resellers>
        <clients><xsl:apply-templates select="customer"/></clients>
        <domains><xsl:apply-templates select="site"/></domains>
      </admin>
    </migration-dump>
  </xsl:template>

  <!-- Accounts ============================================================================ -->

  <xsl:template match="partner">
    <reseller>
      <xsl:call-template name="account"/>
      <clients><xsl:apply-templates select="customer"/></clients>
    </reseller>
  </xsl:template>

  <xsl:template match="customer">
    <client><xsl:call-template name="account"/></client>
  </xsl:template>

  <xsl:template name="account">
    <xsl:attribute name="name"><xsl:value-of select="@login"/></xsl:attribute>
    <xsl:attribute name="contact"><xsl:value-of select="normalize-space(person/name)"/></xsl:attribute>
    <xsl:apply-templates select="@uuid | @opened"/>
    <preferences><xsl:apply-templates select="person/*[normalize-space()]"/></preferences>
    <properties>
      <xsl:apply-templates select="secret"/>
      <xsl:call-template name="status"/>
    </properties>
    <limits-and-permissions>
      <xsl:call-template name="limits"/>
      <xsl:apply-templates select="right"/>
      <xsl:apply-templates select="key('plan', @plan)/right[not(@to = current()/right/@to)]"/>
    </limits-and-permissions>
    <ip_pool><xsl:apply-templates select="address"/></ip_pool>
    <xsl:call-template name="traffic"/>
    <domains><xsl:apply-templates select="site"/></domains>
  </xsl:template>

  <!-- Sites =============================================================================== -->

  <xsl:template match="site">
    <domain name="{@name}" www="{not(@www = 'no')}">
      <xsl:apply-templates select="@uuid | @opened"/>
      <properties>
        <xsl:apply-templates select="address[1]"/>
        <xsl:call-template name="status"/>
      </properties>
      <limits-and-permissions><xsl:call-template name="limits"/></limits-and-permissions>
      <xsl:apply-templates select="keeper"/>
      <xsl:call-template name="traffic"/>
    </domain>
  </xsl:template>

  <!-- The rights of a plan are the keeper's. -->
  <xsl:template match="keeper">
    <domainuser contact="{normalize-space(person/name)}" status="{not(@enters = 'no')}">
      <xsl:apply-templates select="secret | right"/>
      <xsl:apply-templates select="key('plan', ../@plan)/right[not(@to = current()/right/@to)]"/>
      <xsl:apply-templates select="person/*[normalize-space()]"/>
    </domainuser>
  </xsl:template>

  <!-- What they share ===================================================================== -->

  <xsl:template match="@uuid"><xsl:attribute name="guid"><xsl:value-of select="."/></xsl:attribute></xsl:template>
  <xsl:template match="@opened">
    <xsl:attribute name="cr-date"><xsl:value-of select="substring(., 1, 10)"/></xsl:attribute>
  </xsl:template>

  <xsl:template name="status">
    <status>
      <xsl:choose>
        <xsl:when test="@state = 'closed-by-operator'"><disabled-by name="admin"/></xsl:when>
        <xsl:when test="@state = 'closed-by-partner'"><disabled-by name="reseller"/></xsl:when>
        <xsl:when test="@state = 'closed-by-customer'"><disabled-by name="client"/></xsl:when>
        <xsl:otherwise><enabled/></xsl:otherwise>
      </xsl:choose>
    </status>
  </xsl:template>

  <xsl:template match="secret">
    <password type="plain"><xsl:value-of select="."/></password>
  </xsl:template>
  <xsl:template match="secret[@form = 'base64']">
    <password type="plain" encoding="base64"><xsl:value-of select="normalize-space()"/></password>
  </xsl:template>
  <xsl:template match="secret[@form = 'crypt']">
    <password type="encrypted"><xsl:value-of select="normalize-space()"/></password>
  </xsl:template>

  <xsl:template match="address">
    <ip>
      <ip-address><xsl:value-of select="@ip"/></ip-address>
      <ip-type>
        <xsl:choose>
          <xsl:when test="@use = 'own'">exclusive</xsl:when>
          <xsl:otherwise>shared</xsl:otherwise>
        </xsl:choose>
      </ip-type>
    </ip>
  </xsl:template>

  <!-- A day's row: date, service, bytes in, bytes out. -->
  <xsl:template name="traffic">
    <xsl:if test="usage">
      <traffic>
        <xsl:for-each select="usage">
          <xsl:value-of select="concat(@day, '&#9;', @of, '&#9;', @in, '&#9;', @out, '&#10;')"/>
        </xsl:for-each>
      </traffic>
    </xsl:if>
  </xsl:template>

  <!-- Contact data. A name that stands in no template is dropped. ============================ -->

  <xsl:template match="mail"><pinfo name="email"><xsl:value-of select="normalize-space()"/></pinfo></xsl:template>
  <xsl:template match="firm"><pinfo name="company"><xsl:value-of select="normalize-space()"/></pinfo></xsl:template>
  <xsl:template match="phone"><pinfo name="phone"><xsl:value-of select="normalize-space()"/></pinfo></xsl:template>
  <xsl:template match="fax"><pinfo name="fax"><xsl:value-of select="normalize-space()"/></pinfo></xsl:template>
  <xsl:template match="street"><pinfo name="address"><xsl:value-of select="normalize-space()"/></pinfo></xsl:template>
  <xsl:template match="town"><pinfo name="city"><xsl:value-of select="normalize-space()"/></pinfo></xsl:template>
  <xsl:template match="region"><pinfo name="state"><xsl:value-of select="normalize-space()"/></pinfo></xsl:template>
  <xsl:template match="postcode"><pinfo name="zip"><xsl:value-of select="normalize-space()"/></pinfo></xsl:template>
  <xsl:template match="country"><pinfo name="country"><xsl:value-of select="normalize-space()"/></pinfo></xsl:template>
  <xsl:template match="language"><pinfo name="locale"><xsl:value-of select="normalize-space()"/></pinfo></xsl:template>
  <xsl:template match="person/*" priority="-0.25"/>

  <!-- Rights ============================================================================== -->

  <xsl:template match="right[@to = 'make-customers']"><permission name="create_clients" value="{not(@granted = 'no')}"/></xsl:template>
  <xsl:template match="right[@to = 'make-sites']"><permission name="create_domains" value="{not(@granted = 'no')}"/></xsl:template>
  <xsl:template match="right[@to = 'oversell']"><permission name="allow_oversell" value="{not(@granted = 'no')}"/></xsl:template>
  <xsl:template match="right[@to = 'hosting']"><permission name="manage_phosting" value="{not(@granted = 'no')}"/></xsl:template>
  <xsl:template match="right[@to = 'dns']"><permission name="manage_dns" value="{not(@granted = 'no')}"/></xsl:template>
  <xsl:template match="right[@to = 'logs']"><permission name="manage_log" value="{not(@granted = 'no')}"/></xsl:template>
  <xsl:template match="right[@to = 'cron']"><permission name="manage_crontab" value="{not(@granted = 'no')}"/></xsl:template>
  <xsl:template match="right[@to = 'shell']"><permission name="manage_sh_access" value="{not(@granted = 'no')}"/></xsl:template>
  <xsl:template match="right[@to = 'many-sessions']"><permission name="multiple-sessions" value="{not(@granted = 'no')}"/></xsl:template>
  <xsl:template match="right"/>

  <!-- Limits ============================================================================== -->

  <xsl:template name="limits">
    <xsl:apply-templates select="quota"/>
    <xsl:apply-templates select="key('plan', @plan)/quota[not(@of = current()/quota/@of)]"/>
    <xsl:apply-templates select="@closes"/>
  </xsl:template>

  <xsl:template match="quota[@of = 'disk']"><limit name="disk_space"><xsl:apply-templates select="@amount" mode="size"/></limit></xsl:template>
  <xsl:template match="quota[@of = 'disk-warning']"><limit name="disk_space_soft"><xsl:apply-templates select="@amount" mode="size"/></limit></xsl:template>
  <xsl:template match="quota[@of = 'traffic']"><limit name="max_traffic"><xsl:apply-templates select="@amount" mode="size"/></limit></xsl:template>
  <xsl:template match="quota[@of = 'traffic-warning']"><limit name="max_traffic_soft"><xsl:apply-templates select="@amount" mode="size"/></limit></xsl:template>
  <xsl:template match="quota[@of = 'mailbox-size']"><limit name="mbox_quota"><xsl:apply-templates select="@amount" mode="size"/></limit></xsl:template>
  <xsl:template match="quota[@of = 'mailboxes']"><limit name="max_box"><xsl:apply-templates select="@amount" mode="count"/></limit></xsl:template>
  <xsl:template match="quota[@of = 'databases']"><limit name="max_db"><xsl:apply-templates select="@amount" mode="count"/></limit></xsl:template>
  <xsl:template match="quota[@of = 'lists']"><limit name="max_maillists"><xsl:apply-templates select="@amount" mode="count"/></limit></xsl:template>
  <xsl:template match="quota[@of = 'sites']"><limit name="max_dom"><xsl:apply-templates select="@amount" mode="count"/></limit></xsl:template>
  <xsl:template match="quota[@of = 'customers']"><limit name="max_cl"><xsl:apply-templates select="@amount" mode="count"/></limit></xsl:template>
  <xsl:template match="quota"/>
  <xsl:template match="@closes"><limit name="expiration"><xsl:apply-templates select="." mode="count"/></limit></xsl:template>

  <!-- Sizes are given in units, the rest is counted. -->
  <xsl:template mode="count" match="@*">
    <xsl:call-template name="number"><xsl:with-param name="value" select="."/></xsl:call-template>
  </xsl:template>
  <xsl:template mode="size" match="@*">
    <xsl:call-template name="number"><xsl:with-param name="value" select=". * 1048576"/></xsl:call-template>
  </xsl:template>
  <xsl:template mode="size" match="quota[@unit = 'B']/@*">
    <xsl:call-template name="number"><xsl:with-param name="value" select="."/></xsl:call-template>
  </xsl:template>
  <xsl:template mode="size" match="quota[@unit = 'KB']/@*">
    <xsl:call-template name="number"><xsl:with-param name="value" select=". * 1024"/></xsl:call-template>
  </xsl:template>
  <xsl:template mode="size" match="quota[@unit = 'GB']/@*">
    <xsl:call-template name="number"><xsl:with-param name="value" select=". * 1073741824"/></xsl:call-template>
  </xsl:template>
  <xsl:template mode="size" match="quota/@*[. = 'unlimited']" priority="1">-1</xsl:template>
  <xsl:template mode="count" match="quota/@*[. = 'unlimited']" priority="1">-1</xsl:template>

  <!-- A whole number in decimal digits; XPath writes big ones with an exponent. Below 2^53 they are
       exact; of a fraction no more counts than was sold. -->
  <xsl:template name="number">
    <xsl:param name="value"/>
    <xsl:if test="not($value &gt;= 0 and $value &lt; 9007199254740992)">
      <xsl:message terminate="yes">
        <xsl:value-of select="concat('Not an amount: ', name(..), ' ', ../@of, ' &quot;', ., '&quot;')"/>
      </xsl:message>
    </xsl:if>
    <xsl:value-of select="format-number(floor($value), '0')"/>
  </xsl:template>

</xsl:stylesheet>
